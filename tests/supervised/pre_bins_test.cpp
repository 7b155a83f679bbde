#include "supervised/pre_bins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace MCBinning {
namespace {

using testing::ElementsAre;

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
      FindPreBins(preProcess, SortedRows(rows), totalWeight, rightBorderClosed, boundaries));
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
  EXPECT_FALSE(FindPreBins(preProcess, SortedRows(), 0.0, true, boundaries));
  EXPECT_TRUE(boundaries.empty());
}

}  // namespace
}  // namespace MCBinning
