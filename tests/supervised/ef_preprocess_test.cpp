#include "supervised/ef_preprocess.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "data/sorted_rows.h"
#include "random/equal_frequency_steps.h"
#include "random/random_runs.h"

namespace {

using MCBinning::SortedRows;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Cuts {
  bool done = false;
  std::vector<double> cutPoints;
  std::vector<double> binWeights;
};

std::vector<SortedRows::Row> rowsOf(const std::vector<double>& values,
                                    const std::vector<double>& weights) {
  std::vector<SortedRows::Row> rows;
  for (std::size_t i = 0; i < values.size(); ++i) {
    rows.push_back({values[i], 0, weights[i]});
  }
  return rows;
}

std::vector<SortedRows::Row> rowsOf(const std::vector<double>& values) {
  return rowsOf(values, std::vector<double>(values.size(), 1.0));
}

double totalOf(const std::vector<SortedRows::Row>& rows) {
  double total = 0.0;
  for (const SortedRows::Row& row : rows) {
    total += row.weight;
  }
  return total;
}

Cuts cutPairs(const std::vector<SortedRows::Row>& rows, int numberOfBins, bool rightBorderClosed,
              double total) {
  Cuts cuts;
  cuts.done = MCBinning::BINEFPreProcess(numberOfBins, rightBorderClosed)
                  .RunOverPairs(SortedRows(rows), cuts.cutPoints, cuts.binWeights, total);
  return cuts;
}

Cuts cutPairs(const std::vector<SortedRows::Row>& rows, int numberOfBins, bool rightBorderClosed) {
  return cutPairs(rows, numberOfBins, rightBorderClosed, totalOf(rows));
}

Cuts cutTriples(const std::vector<SortedRows::Row>& rows, int numberOfBins,
                bool rightBorderClosed) {
  Cuts cuts;
  cuts.done = MCBinning::BINEFPreProcess(numberOfBins, rightBorderClosed)
                  .RunOverTriples(SortedRows(rows), cuts.cutPoints, cuts.binWeights, totalOf(rows));
  return cuts;
}

void expectCuts(const Cuts& cuts, const std::vector<double>& cutPoints,
                const std::vector<double>& binWeights) {
  EXPECT_TRUE(cuts.done);
  EXPECT_EQ(cuts.cutPoints, cutPoints);
  EXPECT_EQ(cuts.binWeights, binWeights);
}

TEST(EFPreProcessTest, TargetMetExactlyCutsHalfWay) {
  expectCuts(cutPairs(rowsOf({1, 2, 3, 4}), 2, true), {2.5}, {2, 2});
  expectCuts(cutPairs(rowsOf({1, 2, 3, 4}), 2, false), {2.5}, {2, 2});
  expectCuts(cutTriples(rowsOf({1, 2, 3, 4}), 2, true), {2.5}, {});
}

TEST(EFPreProcessTest, TargetIsMetOnlyCloserThanOneEpsilon) {
  constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
  struct Meeting {
    std::vector<double> weights;  // half their sum is the target
    double cutPoint;
  };
  const std::vector<Meeting> meetings = {{{2.0, 2.0 - 2 * kEpsilon}, 1.5},  // half an epsilon above
                                         {{2.0 - kEpsilon, 2.0}, 1.5},      // and below
                                         {{2.0, 2.0 - 4 * kEpsilon}, 1.0}};  // passed by one
  for (const Meeting& meeting : meetings) {
    for (const bool closed : {true, false}) {
      const auto rows = rowsOf({1, 2}, meeting.weights);
      EXPECT_EQ(cutTriples(rows, 2, closed).cutPoints, std::vector<double>{meeting.cutPoint});
    }
    expectCuts(cutPairs(rowsOf({1, 2}, meeting.weights), 2, true), {meeting.cutPoint},
               meeting.weights);
  }
}

TEST(EFPreProcessTest, RunThatCrossesTheTargetIsTheBorder) {
  const auto rows = rowsOf({1, 2, 3}, {1, 5, 1});
  expectCuts(cutPairs(rows, 2, true), {2}, {6, 1});
  expectCuts(cutPairs(rows, 2, false), {2}, {1, 6});
  expectCuts(cutTriples(rows, 2, true), {2}, {});
  expectCuts(cutTriples(rows, 2, false), {2}, {});
}

TEST(EFPreProcessTest, SupervisedUseKeepsBorderCutPoints) {
  expectCuts(cutTriples(rowsOf({7, 7}), 3, true), {7}, {});
  expectCuts(cutTriples(rowsOf({1, 2}, {1, 9}), 2, true), {2}, {});
  expectCuts(cutTriples(rowsOf({1, 2}, {9, 1}), 2, false), {1}, {});
}

TEST(EFPreProcessTest, LastPercentageReachesTheTotalDespiteRounding) {
  int found = 0;
  for (int numberOfBins = 2; numberOfBins <= 200; ++numberOfBins) {
    if (numberOfBins * (100.0 / numberOfBins) < 100.0) {
      ++found;
      std::vector<double> values(static_cast<std::size_t>(numberOfBins) * 2);
      std::iota(values.begin(), values.end(), 0.0);
      for (const bool closed : {true, false}) {
        const Cuts cuts = cutPairs(rowsOf(values), numberOfBins, closed);
        EXPECT_EQ(cuts.cutPoints.size(), static_cast<std::size_t>(numberOfBins - 1));
        EXPECT_EQ(std::accumulate(cuts.binWeights.begin(), cuts.binWeights.end(), 0.0),
                  2.0 * numberOfBins);
      }
    }
  }
  EXPECT_GT(found, 0);
}

TEST(EFPreProcessTest, NothingToDoLeavesTheOutputsAlone) {
  struct Refusal {
    std::vector<SortedRows::Row> rows;
    int numberOfBins;
    double total;
  };
  const std::vector<Refusal> refusals = {{rowsOf({1, 2}), 0, 2.0},
                                         {rowsOf({1, 2}), -1, 2.0},
                                         {rowsOf({1, 2}), std::numeric_limits<int>::min(), 2.0},
                                         {{}, 2, 2.0},
                                         {rowsOf({1, 2}, {0, 0}), 2, 0.0},
                                         {rowsOf({1, 2}), 2, -1.0},
                                         {rowsOf({1, 2}), 2, kNaN}};
  for (const Refusal& refusal : refusals) {
    for (const bool triples : {false, true}) {
      std::vector<double> cutPoints = {4.0};
      std::vector<double> binWeights = {5.0};
      MCBinning::BINEFPreProcess preProcess(refusal.numberOfBins, true);
      const SortedRows rows(refusal.rows);
      EXPECT_FALSE(triples ? preProcess.RunOverTriples(rows, cutPoints, binWeights, refusal.total)
                           : preProcess.RunOverPairs(rows, cutPoints, binWeights, refusal.total));
      EXPECT_EQ(cutPoints, std::vector<double>{4.0});
      EXPECT_EQ(binWeights, std::vector<double>{5.0});
    }
  }
}

TEST(EFPreProcessTest, EqualValuesAreNeverSeparated) {
  const auto rows = rowsOf({1, 1, 1, 2, 2, 3});
  expectCuts(cutPairs(rows, 2, true), {1.5}, {3, 3});
  expectCuts(cutPairs(rows, 3, true), {1, 2}, {3, 2, 1});
  expectCuts(cutPairs(rowsOf({1, 1, 2, 2, 2, 3}), 2, true), {2}, {5, 1});
}

TEST(EFPreProcessTest, OpenRunUpToTheMaximumMakesABinOfItsOwn) {
  expectCuts(cutPairs(rowsOf({1, 2}, {1, 9}), 4, false), {2}, {1, 9});
}

TEST(EFPreProcessTest, InfiniteValuesAreOrdinary) {
  expectCuts(cutPairs(rowsOf({-kInfinity, 0, 1, kInfinity}), 2, true), {0.5}, {2, 2});
  const Cuts cuts = cutPairs(rowsOf({-kInfinity, kInfinity}), 2, true);
  ASSERT_EQ(cuts.cutPoints.size(), 1U);
  EXPECT_TRUE(std::isnan(cuts.cutPoints[0]));
  EXPECT_EQ(cuts.binWeights, (std::vector<double>{1, 1}));
}

TEST(EFPreProcessTest, WeightLostToRoundingIsNoBin) {
  expectCuts(cutPairs(rowsOf({1, 2}, {1e20, 1}), 2, true), {}, {1e20});
  expectCuts(cutPairs(rowsOf({1, 2}, {1e20, 1}), 2, false), {}, {1e20});
}

TEST(EFPreProcessTest, OverflowingMidpointsNeedNotAscend) {
  expectCuts(cutPairs(rowsOf({1e308, 1.5e308, 1.6e308, 1.7e308}, {1, 1, 3, 3}), 4, true),
             {kInfinity, 1.6e308}, {2, 3, 3});
  expectCuts(cutPairs(rowsOf({-1.7e308, -1.6e308, -1.5e308}, {3, 1, 4}), 4, true),
             {-1.7e308, -kInfinity}, {3, 1, 4});
  // Left out as repetitions, with the weight before them.
  expectCuts(cutPairs(rowsOf({1e308, 1.5e308, 1.6e308, 1.7e308}), 4, true), {kInfinity}, {1, 1});
}

TEST(EFPreProcessTest, MidpointOnANeighbourCountsTheRowsOfThatValueOnItsOtherSide) {
  const double greater = 0.1 + 0.2;
  ASSERT_EQ((0.3 + greater) / 2, greater);
  expectCuts(cutPairs(rowsOf({0.1, 0.3, greater, 0.7}), 2, true), {greater}, {2, 2});
  const double next = std::nextafter(greater, 1.0);
  ASSERT_EQ((greater + next) / 2, greater);
  expectCuts(cutPairs(rowsOf({0.1, greater, next, 0.7}), 2, false), {greater}, {2, 2});
}

TEST(EFPreProcessTest, FarMoreBinsThanValuesCostNoTimeOfTheirOwn) {
  constexpr int kMost = std::numeric_limits<int>::max();
  expectCuts(cutPairs(rowsOf({1, 2, 3}), kMost, true), {1, 2}, {1, 1, 1});
  expectCuts(cutPairs(rowsOf({1, 2, 3}), kMost, false), {2, 3}, {1, 1, 1});
  expectCuts(cutTriples(rowsOf({1, 2, 3}), kMost, true), {1, 2, 3}, {});
}

TEST(EFPreProcessTest, OneObjectServesManyTables) {
  MCBinning::BINEFPreProcess preProcess(2, true);
  const SortedRows first(rowsOf({1, 2, 3, 4}));
  const SortedRows second(rowsOf({10, 20}));
  for (int round = 0; round < 2; ++round) {
    Cuts cuts;
    cuts.done = preProcess.RunOverPairs(first, cuts.cutPoints, cuts.binWeights, 4.0);
    expectCuts(cuts, {2.5}, {2, 2});
    Cuts triples;
    triples.done = preProcess.RunOverTriples(second, triples.cutPoints, triples.binWeights, 2.0);
    expectCuts(triples, {15}, {});
  }
}

TEST(EFPreProcessTest, RandomRowsAreCutAsByThePlainModel) {
  mcbinning_tests::forRandomRuns(20000, mcbinning_tests::stepsOfEqualFrequency);
}

}  // namespace
