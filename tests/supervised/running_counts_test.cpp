#include "supervised/running_counts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "random/random_runs.h"
#include "support/candidate_entries.h"

namespace MCBinning {
namespace {

/// Compares the counts at every gap of an interval with those of a scan.
void expectCountsOfAScan(const CandidateTable& table, RunningCounts& counts, std::size_t first,
                         std::size_t last) {
  counts.Start(first, last);
  ClassCounts right;
  table.Sum(first, last, right);
  EXPECT_EQ(counts.Total(), right);
  ClassCounts left(right.size(), 0.0);
  SplitCounts at;
  for (std::size_t gap = first;; ++gap) {
    counts.At(gap, at);
    ASSERT_EQ(at.left, left) << gap;
    ASSERT_EQ(at.right, right) << gap;
    if (gap == last + 1) {
      break;
    }
    table.AddTo(left, gap, gap + 1);
    table.SubtractFrom(right, gap, gap + 1);
  }
}

void expectCountsOfScans(mcbinning_tests::Choices& choices, std::size_t candidates,
                         bool fractions) {
  std::vector<SortedRows::Row> rows;
  for (std::size_t i = 0; i < 2 * candidates; ++i) {
    const double weight = choices.Between(1, 9);
    rows.push_back(
        {static_cast<double>(i / 2), choices.Below(3), fractions ? weight / 10.0 : weight});
  }
  const mcbinning_tests::CandidatesOfRows table(rows, 3);
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
TEST(RunningCountsTest, AreThoseOfAScan) {
  mcbinning_tests::forRandomRuns(3, [](mcbinning_tests::Choices& choices) {
    for (const std::size_t candidates : {1000U, 768U}) {
      expectCountsOfScans(choices, candidates, false);
      expectCountsOfScans(choices, candidates, true);
    }
  });
}

TEST(RunningCountsTest, EmptyTableHasNothingToCount) {
  const mcbinning_tests::CandidatesOfRows table({}, 2);
  EXPECT_TRUE(table.IsConsistent());
  const RunningCounts counts(table);
  EXPECT_EQ(counts.Total(), ClassCounts());
}

}  // namespace
}  // namespace MCBinning
