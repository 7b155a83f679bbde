#include "supervised/split_scan.h"

#include <gtest/gtest.h>

namespace MCBinning {
namespace {

SplitScan::Split bestSplitOf(const std::vector<SortedRows::Row>& rows, std::size_t nCategories) {
  const CandidateTable table =
      CandidateTable::FromRows(SortedRows(rows), nCategories, rows.size(), true);
  ClassCounts total;
  table.Sum(0, table.Size() - 1, total);
  return SplitScan(table).FindBest(0, table.Size() - 1, total);
}

SplitScan::Split bestSplitOfPreBins(const std::vector<double>& counts, std::size_t nCategories) {
  const std::vector<double> boundaries(counts.size() / nCategories + 1, 0.0);
  const CandidateTable table = CandidateTable::FromPreBins(&boundaries, &counts, nCategories);
  ClassCounts total;
  table.Sum(0, table.Size() - 1, total);
  return SplitScan(table).FindBest(0, table.Size() - 1, total);
}

TEST(SplitScanTest, FindsTheClassBoundary) {
  const auto split = bestSplitOf({{1, 0, 1}, {2, 0, 1}, {3, 1, 1}, {4, 1, 1}}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.position, 1U);
  EXPECT_EQ(split.entropy, 0.0);
}

TEST(SplitScanTest, EqualWeightedEntropiesTakeTheEarlierPosition) {
  // A, B, A: both boundaries leave the same parts, mirrored.
  const auto split = bestSplitOf({{1, 0, 1}, {2, 1, 1}, {3, 0, 1}}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.position, 0U);
}

TEST(SplitScanTest, RunOfOneCategoryIsNotExamined) {
  EXPECT_FALSE(bestSplitOf({{1, 1, 1}, {2, 1, 5}, {3, 1, 1}}, 2).found);
}

// The rounding of fractional weights can make a position that should not be examined the least of
// all, which tells it from one that is.
TEST(SplitScanTest, FirstPositionAfterAClassChangeIsExamined) {
  const auto split = bestSplitOf({{0, 0, 0.5}, {1, 1, 1.9}, {2, 1, 0.7}, {3, 0, 2}}, 2);
  EXPECT_EQ(split.position, 1U);  // 0 if it were passed over
}

TEST(SplitScanTest, FurtherPositionsOfARunOfOneCategoryAreNotExamined) {
  const auto split =
      bestSplitOf({{0, 0, 0.2}, {1, 1, 1.3}, {2, 1, 2}, {3, 1, 0.1}, {4, 0, 0.3}}, 2);
  EXPECT_EQ(split.position, 0U);  // 2 if it were examined
}

TEST(SplitScanTest, NeighboursWithoutAnyWeightAreMixed) {
  const auto split = bestSplitOfPreBins({0, 0, 0, 0}, 2);
  EXPECT_FALSE(split.found);  // examined, but its entropy 0 / 0 is no number
  // Both positions between the empty pre-bins tie with the one before them, which comes first.
  EXPECT_EQ(bestSplitOfPreBins({0, 0, 0, 0, 3, 1, 1, 3}, 2).position, 2U);
}

TEST(SplitScanTest, TwoCategoriesInBothNeighboursAreMixed) {
  const auto split = bestSplitOfPreBins({1, 1, 1, 1}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.position, 0U);
  EXPECT_EQ(split.entropy, 1.0);
}

TEST(SplitScanTest, LastPositionWinsWhenRoundingPutsTheOthersAboveIt) {
  // Three candidates with the same class shares: no split tells anything.
  const auto split = bestSplitOfPreBins({30, 30, 54, 25, 25, 45, 10, 10, 18}, 3);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.position, 2U);
}

TEST(SplitScanTest, LastPositionIsNotExaminedAfterAPureOne) {
  EXPECT_FALSE(bestSplitOf({{1, 0, 0.6}, {2, 0, 1.3}, {3, 0, 0.4}}, 1).found);
}

TEST(SplitScanTest, RunningCountsMoveByOneCandidateAtATime) {
  const ClassCounts total = {0.1 + 0.2 + 0.7 + 0.4, 0.1 + 0.2, 0.7 + 0.4};
  const ClassCounts left = {0.1 + 0.2, 0.1 + 0.2, 0.0};
  const ClassCounts right = {total[0] - 0.1 - 0.2, total[1] - 0.1 - 0.2, total[2]};
  ASSERT_NE(right[0], 0.7 + 0.4);  // the rounding of the running sums is part of the result
  const auto split = bestSplitOf({{1, 0, 0.1}, {2, 0, 0.2}, {3, 1, 0.7}, {4, 1, 0.4}}, 2);
  EXPECT_EQ(split.position, 1U);
  EXPECT_EQ(split.entropy, WeightedEntropy(left, right));
}

}  // namespace
}  // namespace MCBinning
