#include "supervised/candidate_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/candidate_entries.h"

namespace MCBinning {
namespace {

using mcbinning_tests::CandidatesOfRows;
using mcbinning_tests::codesOf;
using mcbinning_tests::weightsOf;
using testing::ElementsAre;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<double> cutPointsOf(const CandidateTable& table) {
  std::vector<double> cutPoints;
  for (std::size_t gap = 1; gap < table.Size(); ++gap) {
    cutPoints.push_back(table.CutPointIn(gap));
  }
  return cutPoints;
}

TEST(CandidateTableTest, HoldsOneCandidatePerDistinctValueWithAscendingCodes) {
  const CandidatesOfRows table({{1, 2, 1}, {1, 0, 2}, {1, 2, 4}, {2.5, 1, 1}, {3, 1, 1}, {3, 1, 1}},
                               3);
  ASSERT_TRUE(table.IsConsistent());
  ASSERT_EQ(table.Size(), 3U);
  EXPECT_THAT(codesOf(table, 0), ElementsAre(0, 2));
  EXPECT_THAT(weightsOf(table, 0), ElementsAre(2, 5));
  EXPECT_THAT(codesOf(table, 1), ElementsAre(1));
  EXPECT_THAT(weightsOf(table, 1), ElementsAre(1));
  EXPECT_THAT(codesOf(table, 2), ElementsAre(1));
  EXPECT_THAT(weightsOf(table, 2), ElementsAre(2));
}

TEST(CandidateTableTest, ClosedRightBorderCutsAtTheLowerNeighbour) {
  const CandidatesOfRows table({{1, 0, 1}, {2, 0, 1}, {4, 1, 1}}, 2, true);
  EXPECT_THAT(cutPointsOf(table), ElementsAre(1, 2));
  EXPECT_TRUE(std::isnan(table.CutPointIn(3)));
}

TEST(CandidateTableTest, OpenRightBorderCutsAtTheUpperNeighbour) {
  const CandidatesOfRows table({{1, 0, 1}, {2, 0, 1}, {4, 1, 1}}, 2, false);
  EXPECT_THAT(cutPointsOf(table), ElementsAre(2, 4));
  EXPECT_TRUE(std::isnan(table.CutPointIn(3)));
}

TEST(CandidateTableTest, ZerosOfBothSignsAreOneCandidateAndEachNaNItsOwn) {
  const CandidatesOfRows table(
      {{-kInf, 0, 1}, {-0.0, 0, 1}, {0.0, 1, 1}, {kInf, 0, 1}, {kNaN, 0, 1}, {kNaN, 0, 1}}, 2);
  ASSERT_EQ(table.Size(), 5U);
  EXPECT_THAT(codesOf(table, 1), ElementsAre(0, 1));
}

TEST(CandidateTableTest, NoRowsMakeAConsistentTableWithoutCandidates) {
  const CandidatesOfRows table({}, 2);
  EXPECT_TRUE(table.IsConsistent());
  EXPECT_EQ(table.Size(), 0U);
}

TEST(CandidateTableTest, CodeBeyondTheCategoriesIsInconsistent) {
  EXPECT_FALSE(CandidatesOfRows({{1, 2, 1}}, 2).IsConsistent());
  EXPECT_FALSE(CandidatesOfRows({{1, -1, 1}}, 2).IsConsistent());
  EXPECT_FALSE(CandidatesOfRows({{1, 0, 1}}, 257).IsConsistent());
  EXPECT_TRUE(CandidatesOfRows({{1, 255, 1}}, 256).IsConsistent());
}

TEST(CandidateTableTest, PreBinsTakeTheirCountsAndShareBoundaries) {
  const std::vector<double> boundaries = {-9, 1, 2, 9};
  const std::vector<double> counts = {3, 0, 0, 0, 1, 2};
  const CandidateTable table = CandidateTable::FromPreBins(boundaries, counts, 2);
  ASSERT_TRUE(table.IsConsistent());
  ASSERT_EQ(table.Size(), 3U);
  EXPECT_THAT(cutPointsOf(table), ElementsAre(1, 2));
  EXPECT_TRUE(std::isnan(table.CutPointIn(3)));
  EXPECT_THAT(codesOf(table, 0), ElementsAre(0));
  EXPECT_TRUE(codesOf(table, 1).empty());
  EXPECT_THAT(weightsOf(table, 2), ElementsAre(1, 2));
}

TEST(CandidateTableTest, PreBinCountsOfAnotherSizeAreInconsistent) {
  const std::vector<double> boundaries = {-9, 1, 9};
  const std::vector<double> counts = {1, 2, 3};
  EXPECT_FALSE(CandidateTable::FromPreBins(boundaries, counts, 2).IsConsistent());
  EXPECT_FALSE(CandidateTable::FromPreBins(boundaries, counts, 1).IsConsistent());
  const std::vector<double> none;
  EXPECT_FALSE(CandidateTable::FromPreBins(none, none, 2).IsConsistent());
  const std::vector<double> tooMany(2 * 257, 1.0);
  EXPECT_FALSE(CandidateTable::FromPreBins(boundaries, tooMany, 257).IsConsistent());
}

TEST(CandidateTableTest, AddsAndSubtractsCategoryByCategory) {
  // 0.1 + 0.2 + 0.3 and 0.1 + (0.2 + 0.3) differ in the last bit.
  const CandidatesOfRows table({{1, 0, 0.1}, {2, 0, 0.2}, {2, 1, 0.3}}, 2);
  ClassCounts counts;
  table.Sum(0, 1, counts);
  EXPECT_THAT(counts, ElementsAre(0.1 + 0.2 + 0.3, 0.1 + 0.2, 0.3));
  table.SubtractFrom(counts, 1, 2);
  EXPECT_THAT(counts, ElementsAre(0.1 + 0.2 + 0.3 - 0.2 - 0.3, 0.1 + 0.2 - 0.2, 0.3 - 0.3));
}

TEST(CandidateTableTest, AddsTheWeightsOfACategoryInRowOrder) {
  const CandidatesOfRows table({{1, 0, 0.1}, {1, 1, 9}, {1, 0, 0.2}, {1, 0, 0.3}}, 2);
  EXPECT_THAT(weightsOf(table, 0), ElementsAre(0.1 + 0.2 + 0.3, 9));
}

}  // namespace
}  // namespace MCBinning
