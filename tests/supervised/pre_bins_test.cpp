#include "supervised/pre_bins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace MCBinning {
namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLowest = std::numeric_limits<double>::lowest();
constexpr double kHighest = std::numeric_limits<double>::max();

std::vector<double> boundariesOf(const std::vector<SortedRows::Row>& rows, int numberOfBins,
                                 bool rightBorderClosed) {
  BINEFPreProcess preProcess(numberOfBins, rightBorderClosed);
  double totalWeight = 0.0;
  for (const auto& row : rows) {
    totalWeight += row.weight;
  }
  std::vector<double> boundaries;
  EXPECT_TRUE(
      findPreBins(preProcess, SortedRows(rows), totalWeight, rightBorderClosed, boundaries));
  return boundaries;
}

TEST(PreBinsTest, OuterBoundariesAreTheFiniteEnds) {
  const auto boundaries = boundariesOf({{1, 0, 1}, {2, 0, 1}, {3, 0, 1}, {4, 0, 1}}, 2, true);
  EXPECT_THAT(boundaries, ElementsAre(kLowest, 2.5, kHighest));
  EXPECT_EQ(kLowest, -1.7976931348623157e308);
  EXPECT_EQ(kHighest, 1.7976931348623157e308);
}

TEST(PreBinsTest, OneBinHasTheOuterBoundariesAlone) {
  const std::vector<SortedRows::Row> rows = {{1, 0, 1}, {2, 0, 1}};
  EXPECT_THAT(boundariesOf(rows, 1, true), ElementsAre(kLowest, kHighest));
  EXPECT_THAT(boundariesOf(rows, 1, false), ElementsAre(kLowest, kHighest));
}

TEST(PreBinsTest, ClosedBorderDropsACutPointAtTheMaximum) {
  const std::vector<SortedRows::Row> rows = {{1, 0, 1}, {2, 0, 1}, {3, 0, 9}};
  EXPECT_THAT(boundariesOf(rows, 2, true), ElementsAre(kLowest, kHighest));
  EXPECT_THAT(boundariesOf(rows, 2, false), ElementsAre(kLowest, 3, kHighest));
}

TEST(PreBinsTest, OpenBorderDropsACutPointAtTheMinimum) {
  const std::vector<SortedRows::Row> rows = {{1, 0, 9}, {2, 0, 1}, {3, 0, 1}};
  EXPECT_THAT(boundariesOf(rows, 2, false), ElementsAre(kLowest, kHighest));
  EXPECT_THAT(boundariesOf(rows, 2, true), ElementsAre(kLowest, 1, kHighest));
}

TEST(PreBinsTest, FailsWhenThePreProcessingDoes) {
  BINEFPreProcess preProcess(2, true);
  std::vector<double> boundaries = {1, 2};
  EXPECT_FALSE(findPreBins(preProcess, SortedRows(), 0.0, true, boundaries));
  EXPECT_TRUE(boundaries.empty());
}

TEST(PreBinsTest, AreNeededAboveTheThresholdAndNeverWithoutOne) {
  EXPECT_TRUE(arePreBinsNeeded(2, 3));
  EXPECT_FALSE(arePreBinsNeeded(3, 3));
  EXPECT_FALSE(arePreBinsNeeded(0, 3));
  EXPECT_FALSE(arePreBinsNeeded(-1, 4294967295U));
}

/// Rows (value, code) with the weights 1, 2, 4, ...
class CountPerBinTest : public testing::Test {
 protected:
  void Build(const std::vector<std::pair<double, int>>& rows) {
    double weight = 1.0;
    for (const auto& [value, code] : rows) {
      rows_.push_back({value, code, weight});
      weight *= 2.0;
    }
  }

  MCStatus Count(const std::vector<double>& boundaries, bool rightBorderClosed) {
    return countPerBin(SortedRows(rows_), 2, boundaries, rightBorderClosed, counts_);
  }

  std::vector<SortedRows::Row> rows_;
  std::vector<double> counts_ = {-1.0};
};

const MCStatus kBadBoundaries(120002, true);

TEST_F(CountPerBinTest, BinsAreCountedPerCategory) {
  Build({{1, 0}, {2, 1}, {2, 0}, {3, 1}, {4, 0}});
  EXPECT_TRUE(Count({0, 2, 4}, true).IsOK());
  EXPECT_EQ(counts_, (std::vector<double>{1 + 4, 2, 16, 8}));
  EXPECT_TRUE(Count({0, 2, 5}, false).IsOK());
  EXPECT_EQ(counts_, (std::vector<double>{1, 0, 4 + 16, 2 + 8}));
}

TEST_F(CountPerBinTest, FewerThanTwoBoundariesLeaveTheOutputAsItIs) {
  Build({{1, 0}});
  EXPECT_EQ(Count({}, true), kBadBoundaries);
  EXPECT_EQ(Count({1}, true), kBadBoundaries);
  EXPECT_EQ(counts_, std::vector<double>{-1.0});
}

TEST_F(CountPerBinTest, ARowOnTheLastBoundaryIsCountedOnlyWithRightBordersClosed) {
  Build({{10, 0}});
  EXPECT_EQ(Count({0, 10}, false), kBadBoundaries);
  EXPECT_EQ(counts_, (std::vector<double>{0, 0}));
  EXPECT_TRUE(Count({0, 10}, true).IsOK());
  EXPECT_EQ(counts_, (std::vector<double>{1, 0}));
}

TEST_F(CountPerBinTest, RowsBeyondTheLastBoundaryLeaveTheBinsBeforeCounted) {
  Build({{1, 0}, {5, 1}, {11, 0}});
  EXPECT_EQ(Count({0, 2, 10}, true), kBadBoundaries);
  EXPECT_EQ(counts_, (std::vector<double>{1, 0, 0, 2}));
}

TEST_F(CountPerBinTest, RowsUsedUpBeforeTheLastBinLeaveTheirBinAtZero) {
  Build({{1, 0}, {5, 1}});
  EXPECT_EQ(Count({0, 2, 10, 20}, true), kBadBoundaries);
  EXPECT_EQ(counts_, (std::vector<double>{1, 0, 0, 0, 0, 0}));
}

TEST_F(CountPerBinTest, ABinWithoutRowsIsZeroAndTheFirstBoundaryIsNotLookedAt) {
  Build({{-5, 0}, {15, 1}});
  EXPECT_TRUE(Count({0, 2, 10, 20}, true).IsOK());
  EXPECT_EQ(counts_, (std::vector<double>{1, 0, 0, 0, 0, 2}));
}

TEST_F(CountPerBinTest, NaNLiesBeyondEveryBoundary) {
  Build({{1, 0}, {kNaN, 1}});
  EXPECT_EQ(Count({-kInfinity, kInfinity}, true), kBadBoundaries);
  EXPECT_EQ(counts_, (std::vector<double>{1, 0}));
  EXPECT_EQ(Count({kNaN, kNaN}, true), kBadBoundaries);
  EXPECT_EQ(counts_, (std::vector<double>{0, 0}));
}

TEST_F(CountPerBinTest, WithoutRowsASingleBinIsZero) {
  Build({});
  EXPECT_TRUE(Count({0, 10}, true).IsOK());
  EXPECT_EQ(counts_, (std::vector<double>{0, 0}));
  EXPECT_EQ(Count({0, 5, 10}, true), kBadBoundaries);
}

TEST(SearchPreBinsTest, PreBinsAreTheCandidates) {
  std::vector<SortedRows::Row> rows;
  for (int i = 0; i < 40; ++i) {
    rows.push_back({static_cast<double>(i), i < 18 ? 0 : 1, 1});
  }
  Bins bins;
  EXPECT_TRUE(searchPreBins(SortedRows(rows), 2, 40, 4, true, bins).IsOK());
  EXPECT_THAT(bins.cutPoints, ElementsAre(19.5));
  EXPECT_THAT(bins.counts, ElementsAre(20, 18, 2, 20, 0, 20));
}

TEST(SearchPreBinsTest, WithoutRowsThereAreNoBins) {
  Bins bins;
  EXPECT_TRUE(searchPreBins(SortedRows(), 2, 0, 4, true, bins).IsOK());
  EXPECT_EQ(bins.Size(), 0U);
}

TEST(SearchPreBinsTest, RowsBeyondTheLastPreBinAreAWarningAfterASplit) {
  std::vector<SortedRows::Row> rows;
  for (int i = 0; i < 40; ++i) {
    rows.push_back({static_cast<double>(i), i < 20 ? 0 : 1, 1});
  }
  rows.push_back({kInfinity, 1, 1});
  Bins bins;
  EXPECT_EQ(searchPreBins(SortedRows(rows), 2, 41, 4, true, bins), MCStatus(120002, true));
  EXPECT_FALSE(bins.cutPoints.empty());
}

}  // namespace
}  // namespace MCBinning
