#include "supervised/running_counts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace MCBinning {
namespace {

/// Compares the counts at every border of an interval with those of a scan.
void expectCountsOfAScan(const CandidateTable& table, RunningCounts& counts, std::size_t first,
                         std::size_t last) {
  counts.Start(first, last);
  ClassCounts right;
  table.Sum(first, last, right);
  EXPECT_EQ(counts.Total(), right);
  ClassCounts left(right.size(), 0.0);
  SplitCounts at;
  for (std::size_t border = first;; ++border) {
    counts.At(border, at);
    ASSERT_EQ(at.left, left) << border;
    ASSERT_EQ(at.right, right) << border;
    if (border == last + 1) {
      break;
    }
    table.AddTo(left, border, border + 1);
    table.SubtractFrom(right, border, border + 1);
  }
}

void expectCountsOfScans(std::size_t candidates, bool fractions) {
  constexpr std::uint64_t kSeed = 17;
  std::mt19937_64 random(kSeed);
  std::vector<SortedRows::Row> rows;
  for (std::size_t i = 0; i < 2 * candidates; ++i) {
    const double weight = static_cast<double>(random() % 9 + 1);
    rows.push_back({static_cast<double>(i / 2), static_cast<int>(random() % 3),
                    fractions ? weight / 10.0 : weight});
  }
  const CandidateTable table = CandidateTable::FromRows(SortedRows(rows), 3, true);
  RunningCounts counts(table);
  EXPECT_EQ(counts.IsExact(), !fractions);
  const std::vector<std::pair<std::size_t, std::size_t>> intervals = {
      {0, candidates - 1},
      {0, 255},
      {256, 511},
      {255, 256},
      {3, 9},
      {100, 500},
      {256, candidates - 1},
      {candidates - 1, candidates - 1}};
  for (const auto& [first, last] : intervals) {
    SCOPED_TRACE(std::to_string(first) + " to " + std::to_string(last));
    expectCountsOfAScan(table, counts, first, last);
    ClassCounts sum;
    ClassCounts plain;
    counts.Sum(first, last, sum);
    table.Sum(first, last, plain);
    EXPECT_EQ(sum, plain);
  }
}

// 768 candidates end where counts are kept.
TEST(RunningCountsTest, WholeWeightsGiveTheCountsOfAScan) {
  expectCountsOfScans(1000, false);
  expectCountsOfScans(768, false);
}

TEST(RunningCountsTest, FractionalWeightsGiveTheCountsOfAScan) {
  expectCountsOfScans(1000, true);
  expectCountsOfScans(768, true);
}

TEST(RunningCountsTest, EmptyTableHasNothingToCount) {
  const CandidateTable table = CandidateTable::FromRows(SortedRows(), 2, true);
  EXPECT_TRUE(table.IsConsistent());
  const RunningCounts counts(table);
  EXPECT_EQ(counts.Total(), ClassCounts());
}

}  // namespace
}  // namespace MCBinning
