#include "supervised/split_scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "plain_model/model.h"
#include "random/random_runs.h"
#include "support/candidate_entries.h"

namespace MCBinning {
namespace {

using mcbinning_tests::Choices;

plain_model::Candidates candidatesOf(const CandidateTable& table) {
  plain_model::Candidates candidates;
  for (std::size_t candidate = 0; candidate < table.Size(); ++candidate) {
    std::vector<double>& weights = candidates.weights.emplace_back(table.GetNCategories(), 0.0);
    for (std::size_t e = table.FirstEntry(candidate); e < table.FirstEntry(candidate + 1); ++e) {
      weights[table.Code(e)] = table.Weight(e);
    }
  }
  return candidates;
}

/// What the scan finds, which must be what evaluating every gap finds.
SplitScan::Split bestSplitOf(const CandidateTable& table, std::size_t first, std::size_t last) {
  RunningCounts counts(table);
  counts.Start(first, last);
  const SplitScan::Split split = SplitScan(table, counts).FindBest(first, last);
  plain_model::Events events;
  const auto plain = plain_model::bestSplit(candidatesOf(table), first, last, events);
  EXPECT_EQ(split.found, plain.has_value());
  if (split.found && plain) {
    EXPECT_EQ(split.gap, plain->position + 1);
    EXPECT_EQ(split.entropy, plain->entropy);
  }
  return split;
}

SplitScan::Split bestSplitOf(const std::vector<SortedRows::Row>& rows, std::size_t nCategories) {
  const mcbinning_tests::CandidatesOfRows table(rows, nCategories);
  return bestSplitOf(table, 0, table.Size() - 1);
}

SplitScan::Split bestSplitOfPreBins(const std::vector<double>& counts, std::size_t nCategories) {
  const std::vector<double> boundaries(counts.size() / nCategories + 1, 0.0);
  const CandidateTable table = CandidateTable::FromPreBins(boundaries, counts, nCategories);
  return bestSplitOf(table, 0, table.Size() - 1);
}

TEST(SplitScanTest, FindsTheClassBoundary) {
  const auto split = bestSplitOf({{1, 0, 1}, {2, 0, 1}, {3, 1, 1}, {4, 1, 1}}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.gap, 2U);
  EXPECT_EQ(split.entropy, 0.0);
}

TEST(SplitScanTest, EqualWeightedEntropiesTakeTheEarlierPosition) {
  // A, B, A: both boundaries leave the same parts, mirrored.
  const auto split = bestSplitOf({{1, 0, 1}, {2, 1, 1}, {3, 0, 1}}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.gap, 1U);
}

TEST(SplitScanTest, RunOfOneCategoryIsNotExamined) {
  EXPECT_FALSE(bestSplitOf({{1, 1, 1}, {2, 1, 5}, {3, 1, 1}}, 2).found);
}

// The rounding of fractional weights can make a gap that should not be examined the least of
// all, which tells it from one that is.
TEST(SplitScanTest, FirstPositionAfterAClassChangeIsExamined) {
  const auto split = bestSplitOf({{0, 0, 0.5}, {1, 1, 1.9}, {2, 1, 0.7}, {3, 0, 2}}, 2);
  EXPECT_EQ(split.gap, 2U);  // 1 if it were passed over
}

TEST(SplitScanTest, FurtherPositionsOfARunOfOneCategoryAreNotExamined) {
  const auto split =
      bestSplitOf({{0, 0, 0.2}, {1, 1, 1.3}, {2, 1, 2}, {3, 1, 0.1}, {4, 0, 0.3}}, 2);
  EXPECT_EQ(split.gap, 1U);  // 3 if it were examined
}

TEST(SplitScanTest, PositionWhoseEntropyIsNaNNeverWins) {
  // Taking the three weights from their sum leaves less than nothing on the right of gap 3.
  ASSERT_LT(0.1 + 0.1 + 1.0 - 0.1 - 0.1 - 1.0, 0.0);
  const auto split = bestSplitOf({{0, 0, 0.1}, {1, 0, 0.1}, {2, 0, 1.0}, {3, 1, 1.6}}, 2);
  EXPECT_EQ(split.gap, 4U);
}

TEST(SplitScanTest, CategoryOfNegativeWeightIsNoPlaceInATable) {
  // Only weights that somebody changed in their file are negative; the logarithm of their share
  // makes every entropy NaN.
  EXPECT_FALSE(bestSplitOf({{1, 0, 2.5}, {2, 1, -1.0}, {3, 0, 4.0}, {4, 1, -0.5}}, 2).found);
}

TEST(SplitScanTest, NeighboursWithoutAnyWeightAreMixed) {
  const auto split = bestSplitOfPreBins({0, 0, 0, 0}, 2);
  EXPECT_FALSE(split.found);  // examined, but its entropy 0 / 0 is no number
  // Both gaps between the empty pre-bins tie with the one before them, which comes first.
  EXPECT_EQ(bestSplitOfPreBins({0, 0, 0, 0, 3, 1, 1, 3}, 2).gap, 3U);
}

TEST(SplitScanTest, TwoCategoriesInBothNeighboursAreMixed) {
  const auto split = bestSplitOfPreBins({1, 1, 1, 1}, 2);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.gap, 1U);
  EXPECT_EQ(split.entropy, 1.0);
}

TEST(SplitScanTest, LastPositionWinsWhenRoundingPutsTheOthersAboveIt) {
  // Three candidates with the same class shares: no split tells anything.
  const auto split = bestSplitOfPreBins({30, 30, 54, 25, 25, 45, 10, 10, 18}, 3);
  EXPECT_TRUE(split.found);
  EXPECT_EQ(split.gap, 3U);
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
  EXPECT_EQ(split.gap, 2U);
  EXPECT_EQ(split.entropy, weightedEntropy(left, right));
}

struct Shape {
  const char* name;
  // The category of the candidate at i of n, of k.
  std::function<int(double i, double n, int k, Choices&)> code;
};

int step(double i, double n, int k) { return static_cast<int>(i * k / n); }

const std::vector<Shape>& shapes() {
  static const std::vector<Shape> all = {
      {"noise", [](double, double, int k, Choices& c) { return c.Below(k); }},
      {"one category", [](double, double, int, Choices&) { return 0; }},
      {"steps", [](double i, double n, int k, Choices&) { return step(i, n, k); }},
      {"noisy steps", [](double i, double n, int k,
                         Choices& c) { return c.Chance(0.3) ? c.Below(k) : step(i, n, k); }},
      {"mirrored", [](double i, double n, int k,
                      Choices&) { return step(2 * std::min(i, n - 1 - i), n, k) % k; }},
      {"alternating", [](double i, double, int k, Choices&) { return static_cast<int>(i) % k; }},
      {"rare", [](double, double, int k, Choices& c) { return c.Chance(0.999) ? 0 : c.Below(k); }},
      {"first half of all, then one",
       [](double i, double n, int k, Choices& c) { return i < n / 2 ? c.Below(k) : 0; }},
  };
  return all;
}

using WeightOf = std::function<double(Choices&)>;

std::vector<SortedRows::Row> makeRows(const Shape& shape, int n, int k, double rowsPerValue,
                                      const WeightOf& weight, Choices& choices) {
  std::vector<SortedRows::Row> rows;
  double value = 0.0;
  for (int i = 0; i < n; ++i) {
    rows.push_back({value, shape.code(i, n, k, choices), weight(choices)});
    value += choices.Chance(1.0 / rowsPerValue) ? 1.0 : 0.0;
  }
  return rows;
}

/// The whole of each table and stretches of it.
void expectPlainSplits(int n, int k, const WeightOf& weight, std::uint64_t runs = 1) {
  mcbinning_tests::forRandomRuns(runs, [&](Choices& choices) {
    for (const Shape& shape : shapes()) {
      for (const double rowsPerValue : {1.0, 1.5, 20.0}) {
        SCOPED_TRACE(std::string(shape.name) + ", rows per value " + std::to_string(rowsPerValue));
        const auto rows = makeRows(shape, n, k, rowsPerValue, weight, choices);
        const mcbinning_tests::CandidatesOfRows table(rows, static_cast<std::size_t>(k));
        const auto last = static_cast<int>(table.Size()) - 1;
        if (last < 1) {
          continue;
        }
        bestSplitOf(table, 0, table.Size() - 1);
        for (int stretch = 0; stretch < 3; ++stretch) {
          const int first = choices.Below(last);
          bestSplitOf(table, static_cast<std::size_t>(first),
                      static_cast<std::size_t>(choices.Between(first + 1, last)));
        }
      }
    }
  });
}

double one(Choices&) { return 1.0; }
double whole(Choices& choices) { return choices.Between(1, 50); }
double heavy(Choices& choices) { return choices.Between(1, 100000); }
double fraction(Choices& choices) { return 1e-3 + 2.0 * choices.Unit(); }
double wild(Choices& choices) { return std::exp2(2070.0 * choices.Unit() - 1070.0); }
double tiny(Choices& choices) {
  return choices.Between(1, 7) * std::numeric_limits<double>::denorm_min();
}
double huge(Choices&) { return 1e308; }

TEST(SplitScanTest, WholeWeightsGiveTheSplitOfThePlainScan) {
  expectPlainSplits(40, 2, one);
  expectPlainSplits(5000, 2, one);
  expectPlainSplits(5000, 3, whole);
  expectPlainSplits(3000, 10, one);
  expectPlainSplits(2000, 100, whole);
  expectPlainSplits(2000, 256, one);
  expectPlainSplits(3000, 10, heavy);
}

TEST(SplitScanTest, FractionalWeightsGiveTheSplitOfThePlainScan) {
  expectPlainSplits(40, 2, fraction);
  expectPlainSplits(5000, 2, fraction);
  expectPlainSplits(3000, 3, fraction);
  expectPlainSplits(2000, 100, fraction);
  expectPlainSplits(2000, 256, fraction);
}

// The two borders of the mixed middle part are equally good, so the rounding of thousands of
// additions decides between them: what it can amount to belongs into the bound.
TEST(SplitScanTest, RoundingOfManyFractionalWeightsGivesTheSplitOfThePlainScan) {
  struct Mirrored {
    std::size_t n;
    std::size_t atEachEnd;  // of category 0 alone
    std::vector<double> weights;
  };
  const std::vector<Mirrored> tables = {{30000, 7500, {0.1, 2.2, 0.4, 3.0}},
                                        {30000, 7500, {0.7, 3.4, 2.0, 1.5}},
                                        {30000, 5000, {0.2, 1.6, 4.0, 2.0}},
                                        {100000, 20000, {3.6, 3.8}}};
  for (const Mirrored& mirrored : tables) {
    std::vector<SortedRows::Row> rows;
    for (std::size_t i = 0; i < mirrored.n; ++i) {
      const std::size_t toEnd = std::min(i, mirrored.n - 1 - i);
      const std::size_t code = toEnd < mirrored.atEachEnd ? 0 : toEnd % mirrored.weights.size();
      rows.push_back({static_cast<double>(i), static_cast<int>(code), mirrored.weights[code]});
    }
    bestSplitOf(rows, mirrored.weights.size());
  }
}

TEST(SplitScanTest, WeightsOfAnySizeGiveTheSplitOfThePlainScan) {
  expectPlainSplits(300, 2, wild, 20);
  expectPlainSplits(1000, 5, wild, 20);
  expectPlainSplits(3000, 3, tiny);
  expectPlainSplits(1000, 3, huge);
}

// The running counts of both sides then add up to infinity at some positions, where the direct
// formula gives 0.
TEST(SplitScanTest, WeightsThatAddUpToTheLargestDoubleGiveTheSplitOfThePlainScan) {
  mcbinning_tests::forRandomRuns(100, [](Choices& choices) {
    auto rows = makeRows(choices.Pick(shapes()), 300, 2, 1.5, fraction, choices);
    double total = 0.0;
    for (const SortedRows::Row& row : rows) {
      total += row.weight;
    }
    const double scale = std::numeric_limits<double>::max() / total * (1.0 - 0x1p-52);
    for (SortedRows::Row& row : rows) {
      row.weight *= scale;
    }
    bestSplitOf(rows, 2);
  });
}

TEST(SplitScanTest, ManySmallTablesGiveTheSplitOfThePlainScan) {
  for (const int categories : {2, 3, 4}) {
    expectPlainSplits(50 * categories, categories, one, 40);
    expectPlainSplits(50 * categories, categories, fraction, 40);
  }
}

TEST(SplitScanTest, CategoriesAsHeavyAsTheTableOfLogarithmsIsLongGiveTheSplitOfThePlainScan) {
  for (const double weight : {16383.0, 16384.0, 16385.0}) {
    bestSplitOf({{1, 0, weight}, {2, 1, 3}, {3, 0, 5}, {4, 1, weight - 3}}, 2);
    bestSplitOf({{1, 0, weight}, {2, 1, 3}}, 2);
  }
}

double xLogX(double x) { return x > 0.0 ? x * std::log2(x) : 0.0; }

/// The shares of the classes in a table's weight, up to each gap.
std::vector<std::vector<double>> sharesUpTo(const CandidateTable& table) {
  std::vector<std::vector<double>> shares(1, std::vector<double>(table.GetNCategories(), 0.0));
  for (std::size_t candidate = 0; candidate < table.Size(); ++candidate) {
    shares.push_back(shares.back());
    for (std::size_t e = table.FirstEntry(candidate); e < table.FirstEntry(candidate + 1); ++e) {
      shares.back()[table.Code(e)] += table.Weight(e);
    }
  }
  const double total = std::accumulate(shares.back().begin(), shares.back().end(), 0.0);
  for (std::vector<double>& counts : shares) {
    for (double& count : counts) {
      count /= total;
    }
  }
  return shares;
}

/// The least entropy that a tangent leaves possible between two gaps, over the shares of the
/// classes to their left.
double tangentBound(const std::vector<double>& whole, const std::vector<double>& from,
                    const std::vector<double>& to) {
  const double left = (std::accumulate(from.begin(), from.end(), 0.0) +
                       std::accumulate(to.begin(), to.end(), 0.0)) /
                      2.0;
  const double slope = std::log2(left) - std::log2(1.0 - left);
  double bound = xLogX(left) + xLogX(1.0 - left) - slope * left;
  for (std::size_t j = 0; j < whole.size(); ++j) {
    bound += std::min(slope * from[j] - xLogX(from[j]) - xLogX(whole[j] - from[j]),
                      slope * to[j] - xLogX(to[j]) - xLogX(whole[j] - to[j]));
  }
  return bound;
}

TEST(SplitScanTest, BoundsOfStretchesAreThoseOfTheTangentLessWhatRoundingCanDo) {
  mcbinning_tests::forRandomRuns(100, [](Choices& choices) {
    const int k = choices.Between(2, 5);
    const auto rows = makeRows(choices.Pick(shapes()), choices.Between(20, 200), k, 4.0,
                               choices.OneIn(2) ? whole : heavy, choices);
    const mcbinning_tests::CandidatesOfRows table(rows, static_cast<std::size_t>(k));
    RunningCounts counts(table);
    counts.Start(0, table.Size() - 1);
    const SplitScan::Bounds bounds = SplitScan(table, counts).BoundStretches(0, table.Size() - 1);
    const double slack = (k + 16) * 256 * 0x1p-53;
    const auto shares = sharesUpTo(table);
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < table.Size(); ++i) {
      EXPECT_NEAR(bounds.leastEntropies[i],
                  tangentBound(shares.back(), shares[i], shares[i + 1]) - slack, slack / 30);
      if (i > 0) {
        best = std::min(best, tangentBound(shares.back(), shares[i], shares[i]));
      }
    }
    if (table.Size() > 1) {
      EXPECT_NEAR(bounds.greatestBest, best + slack, slack / 30);
    }
  });
}

}  // namespace
}  // namespace MCBinning
