#include "data/value_counts.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

namespace {

using MCBinning::CaseColumns;
using MCBinning::keyOf;
using MCBinning::PackedRow;
using MCBinning::RowCounts;
using MCBinning::ValueCounts;

TEST(ValueCountsTest, CountsTheWeightOfEachCategoryPerValue) {
  const std::vector<double> values{3, -1, 3, MCMV::gMissingValue, 3, -0.0};
  const std::vector<std::uint16_t> codes{1, 0, 0, 0, 1, 1};
  const std::vector<double> weights{2, 1, 5, 9, 3, 4};
  ValueCounts counts(2, 1000);
  ASSERT_TRUE(counts.Count({values, codes.data(), weights.data()}));
  std::vector<PackedRow> rows(6);
  const RowCounts written = counts.WriteRows(rows.data());
  EXPECT_EQ(written.distinctValues, 3U);
  ASSERT_EQ(written.rows, 4U);
  const PackedRow expected[] = {
      {keyOf(-1), 1, 0}, {keyOf(0), 4, 1}, {keyOf(3), 5, 0}, {keyOf(3), 5, 1}};
  for (std::size_t row = 0; row < 4; ++row) {
    EXPECT_EQ(rows[row].key, expected[row].key) << row;
    EXPECT_EQ(rows[row].weight, expected[row].weight) << row;
    EXPECT_EQ(rows[row].code, expected[row].code) << row;
  }
}

bool countsDistinctValues(std::size_t n, std::size_t nCategories, std::size_t nCases) {
  std::vector<double> values(n);
  std::iota(values.begin(), values.end(), 0.0);
  return ValueCounts(nCategories, nCases).Count({values});
}

TEST(ValueCountsTest, GivesUpWhenValuesAreMany) {
  EXPECT_TRUE(countsDistinctValues(16384, 1, 1000000));
  EXPECT_FALSE(countsDistinctValues(16385, 1, 1000000));
  EXPECT_TRUE(countsDistinctValues(512, 256, 1000000));  // the counts of all categories must fit
  EXPECT_FALSE(countsDistinctValues(513, 256, 1000000));
}

TEST(ValueCountsTest, GivesUpWhenFewCasesShareAValue) {
  EXPECT_TRUE(countsDistinctValues(100, 1, 1600));
  EXPECT_FALSE(countsDistinctValues(101, 1, 1600));
  EXPECT_FALSE(countsDistinctValues(1, 1, 15));
}

TEST(ValueCountsTest, GivesUpAtNaN) {
  const std::vector<double> values{1, std::numeric_limits<double>::quiet_NaN()};
  EXPECT_FALSE(ValueCounts(1, 1000).Count({values}));
}

TEST(ValueCountsTest, NoCasesMakeNoRows) {
  ValueCounts counts(2, 0);
  EXPECT_TRUE(counts.Count({}));
  EXPECT_EQ(counts.WriteRows(nullptr).rows, 0U);
}

}  // namespace
