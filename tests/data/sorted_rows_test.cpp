#include "data/sorted_rows.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "support/plain_rows.h"

namespace {

using MCBinning::SortedRows;
using mcbinning_tests::PlainCases;

/// Rows of cases with the codes 0, 1, 2, ... and weights with which rows are not merged.
SortedRows sorted(const std::vector<double>& values) {
  PlainCases cases{values, {}, {}};
  for (std::size_t i = 0; i < values.size(); ++i) {
    cases.codes.push_back(static_cast<std::uint16_t>(i % 256));
    cases.weights.push_back(static_cast<double>(i) + 0.5);
  }
  SortedRows rows;
  rows.Fill(cases.Columns(), 256, false);
  return rows;
}

TEST(SortedRowsTest, WholeWeightsArePackableWhileTheirSumIsBelow2To32) {
  const auto arePackable = [](const std::vector<double>& weights) {
    return MCBinning::arePackable(weights);
  };
  EXPECT_TRUE(arePackable({4294967294.0, 1.0}));
  EXPECT_FALSE(arePackable({4294967294.0, 1.0, 1.0}));
  EXPECT_FALSE(arePackable({1.0, 1.5}));
  EXPECT_FALSE(arePackable({1.0, 0.0}));
  EXPECT_FALSE(arePackable({1.0, -1.0, 2.0}));
  EXPECT_TRUE(arePackable({}));
}

TEST(SortedRowsTest, RowsGivenInOrderAreKeptAsTheyAre) {
  const SortedRows rows({{1.0, 2, 0.5}, {3.0, 0, 4.0}});
  ASSERT_EQ(rows.Size(), 2U);
  EXPECT_EQ(rows.Value(1), 3.0);
  EXPECT_EQ(rows.Code(0), 2);
  EXPECT_EQ(rows.Weight(0), 0.5);
  EXPECT_EQ(SortedRows().Size(), 0U);
  EXPECT_EQ(SortedRows({{1.0, 0, 1.0}, {1.0, 1, 1.0}, {3.0, 0, 1.0}}).CountDistinctValues(), 2U);
}

TEST(SortedRowsTest, WeightsAreAddedRowByRow) {
  for (const double unit : {1.0, 0.1}) {
    const SortedRows rows({{1, 0, 7 * unit}, {2, 1, 2 * unit}, {3, 1, 3 * unit}, {4, 0, 9 * unit}});
    std::vector<double> counts = {unit, 0.0, unit};
    rows.AddWeights(1, 4, 1.0, counts);
    EXPECT_EQ(counts, (std::vector<double>{unit + 2 * unit + 3 * unit + 9 * unit, 9 * unit,
                                           unit + 2 * unit + 3 * unit}));
    rows.AddWeights(0, 2, -1.0, counts);
    EXPECT_EQ(counts,
              (std::vector<double>{unit + 2 * unit + 3 * unit + 9 * unit - 7 * unit - 2 * unit,
                                   9 * unit - 7 * unit, unit + 2 * unit + 3 * unit - 2 * unit}));
    rows.AddWeights(3, 3, 1.0, counts);
    EXPECT_EQ(counts[1], 9 * unit - 7 * unit);
  }
}

TEST(SortedRowsTest, NaNComesAfterAllNumbersAndInfinitiesAreNumbers) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const SortedRows rows = sorted({nan, infinity, 0.0, -nan, -infinity, 1e308});
  EXPECT_EQ(rows.Value(0), -infinity);
  EXPECT_EQ(rows.Value(1), 0.0);
  EXPECT_EQ(rows.Value(2), 1e308);
  EXPECT_EQ(rows.Value(3), infinity);
  EXPECT_TRUE(std::isnan(rows.Value(4)));
  EXPECT_TRUE(std::isnan(rows.Value(5)));
  EXPECT_EQ(rows.Code(4), 0);
  EXPECT_EQ(rows.Code(5), 3);
}

TEST(SortedRowsTest, EqualValuesStayInTheOrderOfTheCases) {
  const SortedRows rows = sorted({2.0, 0.0, -0.0, 2.0, 0.0, 2.0});
  const std::vector<int> expected = {1, 2, 4, 0, 3, 5};
  for (std::size_t row = 0; row < expected.size(); ++row) {
    EXPECT_EQ(rows.Code(row), expected[row]) << row;
  }
  EXPECT_FALSE(std::signbit(rows.Value(1)));  // the first zero stands for all
  EXPECT_TRUE(std::signbit(sorted({-0.0, 0.0}).Value(1)));
}

TEST(SortedRowsTest, DenormalsAreOrderedByValue) {
  const double smallest = std::numeric_limits<double>::denorm_min();
  const SortedRows rows = sorted({smallest * 2, smallest, 0.0, -smallest, -smallest * 2});
  for (std::size_t row = 0; row < 5; ++row) {
    EXPECT_EQ(rows.Code(row), 4 - static_cast<int>(row));
  }
}

TEST(SortedRowsTest, RowsOfWholeWeightsAreMergedByValueAndCode) {
  const PlainCases cases{
      {2, 1, 2, 2, MCMV::gMissingValue, 1}, {1, 0, 0, 1, 1, 0}, {3, 1, 5, 4, 9, 1}};
  SortedRows rows;
  rows.Fill(cases.Columns(), 2, true);
  EXPECT_EQ(rows.CountDistinctValues(), 2U);
  ASSERT_EQ(rows.Size(), 3U);
  EXPECT_EQ(rows.Value(0), 1.0);
  EXPECT_EQ(rows.Weight(0), 2.0);
  EXPECT_EQ(rows.Value(1), 2.0);
  EXPECT_EQ(rows.Code(1), 0);
  EXPECT_EQ(rows.Weight(1), 5.0);
  EXPECT_EQ(rows.Code(2), 1);
  EXPECT_EQ(rows.Weight(2), 7.0);
}

TEST(SortedRowsTest, MergeAddsUpTheWeightsInTheOrderOfTheCases) {
  const PlainCases cases{{1, 1, 1}, {0, 0, 0}, {1e16, 0.5, 1.5}};
  SortedRows rows;
  rows.Fill(cases.Columns(), 1, false);
  EXPECT_EQ(rows.CountDistinctValues(), 1U);
  EXPECT_EQ(rows.Size(), 3U);
  rows.Merge();
  ASSERT_EQ(rows.Size(), 1U);
  EXPECT_EQ(rows.Weight(0), 1e16 + 0.5 + 1.5);
}

TEST(SortedRowsTest, ZeroKeepsItsSignWhenMerged) {
  const PlainCases cases{{0.0, -0.0, -1}, {0, 0, 0}, {0.1, 0.2, 0.3}};
  const PlainCases negative{{-0.0, 0.0, -1}, {0, 0, 0}, {0.1, 0.2, 0.3}};
  SortedRows rows;
  rows.Fill(cases.Columns(), 1, false);
  rows.Merge();
  EXPECT_FALSE(std::signbit(rows.Value(1)));
  rows.Fill(negative.Columns(), 1, false);
  rows.Merge();
  EXPECT_TRUE(std::signbit(rows.Value(1)));
  EXPECT_EQ(rows.Size(), 2U);
}

TEST(SortedRowsTest, NaNIsNeverMerged) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const PlainCases cases{{nan, 1, nan, -nan}, {0, 0, 0, 0}, {}};
  for (const bool wholeWeights : {true, false}) {
    SortedRows rows;
    rows.Fill(cases.Columns(), 1, wholeWeights);
    EXPECT_EQ(rows.CountDistinctValues(), 4U);
    rows.Merge();
    EXPECT_EQ(rows.Size(), 4U);
  }
}

TEST(SortedRowsTest, FillAndClearForgetTheRowsBefore) {
  SortedRows rows;
  rows.Fill(PlainCases{{3, 1}, {0, 0}, {}}.Columns(), 1, true);
  rows.Fill(PlainCases{{7}, {1}, {2.5}}.Columns(), 2, false);
  ASSERT_EQ(rows.Size(), 1U);
  EXPECT_EQ(rows.Value(0), 7.0);
  EXPECT_EQ(rows.Weight(0), 2.5);
  rows.Clear();
  EXPECT_EQ(rows.Size(), 0U);
}

TEST(SortedRowsTest, SumsOfWholeWeightsAreExactBelowTwoToThe53) {
  const auto areExact = [](double first, double second) {
    return SortedRows({{1, 0, first}, {2, 1, second}}).HasExactSums();
  };
  EXPECT_TRUE(areExact(1, 2));
  EXPECT_TRUE(areExact(0x1p32, 1));
  EXPECT_TRUE(areExact(0x1p53 - 2.0, 1));
  EXPECT_FALSE(areExact(0x1p53 - 1.0, 1));
  EXPECT_FALSE(areExact(0x1p40, 0.5));
}

}  // namespace
