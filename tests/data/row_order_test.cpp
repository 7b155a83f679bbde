#include "data/row_order.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

#include "data/sorted_rows.h"
#include "random/random_runs.h"
#include "support/plain_rows.h"

namespace mcbinning_tests {
namespace {

using MCBinning::SortedRows;

constexpr double kTiniest = std::numeric_limits<double>::denorm_min();

struct Distribution {
  const char* name;
  std::function<double(std::size_t i, std::size_t n, Choices&)> value;
};

const std::vector<Distribution>& distributions() {
  using Size = std::size_t;
  static const std::vector<Distribution> all = {
      {"uniform", [](Size, Size, Choices& c) { return c.Unit(); }},
      {"both signs", [](Size, Size, Choices& c) { return c.Unit() - c.Unit(); }},
      {"one giant tie", [](Size, Size, Choices&) { return 7.0; }},
      {"a giant tie among others",
       [](Size, Size, Choices& c) { return c.Flag() ? 0.5 : c.Unit(); }},
      {"ties everywhere", [](Size, Size, Choices& c) { return c.Below(100) / 1.0; }},
      {"ten thousand values", [](Size, Size, Choices& c) { return c.Below(10000) / 1.0; }},
      {"money",
       [](Size, Size, Choices& c) { return std::round(std::exp(6 + 4 * c.Unit()) * 100) / 100; }},
      {"sorted", [](Size i, Size, Choices&) { return static_cast<double>(i); }},
      {"reversed", [](Size i, Size n, Choices&) { return static_cast<double>(n - i); }},
      {"saw", [](Size i, Size, Choices&) { return static_cast<double>(i % 257); }},
      {"denormals", [](Size, Size, Choices& c) { return c.Below(5000) * kTiniest; }},
      {"crowded beside a far one",
       [](Size, Size, Choices& c) { return c.OneIn(50) ? 1e300 : 1000.0 + 1e-9 * c.Unit(); }},
      {"any bits", [](Size, Size, Choices& c) { return c.AnyBits(); }},
      {"specials", [](Size, Size, Choices& c) { return c.Special(); }},
      {"missing",
       [](Size, Size, Choices& c) { return c.OneIn(3) ? MCMV::gMissingValue : c.Unit(); }},
      {"all missing", [](Size, Size, Choices&) { return MCMV::gMissingValue; }},
  };
  return all;
}

enum class Weights { None, Whole, Fractions };

PlainCases makeCases(const Distribution& distribution, std::size_t n, int categories,
                     Weights weights, Choices& choices) {
  PlainCases cases;
  for (std::size_t i = 0; i < n; ++i) {
    cases.values.push_back(distribution.value(i, n, choices));
    cases.codes.push_back(static_cast<std::uint16_t>(choices.Below(categories)));
    if (weights == Weights::Whole) {
      cases.weights.push_back(choices.Between(1, 9));
    } else if (weights == Weights::Fractions) {
      cases.weights.push_back(choices.Unit() + 1e-3);
    }
  }
  return cases;
}

void expectPlainOrder(std::size_t n, int categories, Weights weights) {
  SortedRows rows;  // used again and again, as a table uses it
  forRandomRuns(1, [&](Choices& choices) {
    for (const Distribution& distribution : distributions()) {
      SCOPED_TRACE(distribution.name);
      const PlainCases cases = makeCases(distribution, n, categories, weights, choices);
      const bool wholeWeights = weights != Weights::Fractions;
      rows.Fill(cases.Columns(), static_cast<std::size_t>(categories), wholeWeights);
      const auto plain = plainRows(cases);
      EXPECT_EQ(rows.CountDistinctValues(), countDistinctValues(plain));
      if (!wholeWeights) {
        compareRows(rowsOf(rows), plain);
      }
      rows.Merge();
      compareRows(rowsOf(rows), mergeRows(plain));
    }
  });
}

TEST(RowOrderTest, FewCasesComeAsThePlainSortPutsThem) {
  for (const std::size_t n : {0U, 1U, 2U, 3U, 5U, 8U, 16U, 17U, 24U, 32U, 33U, 39U}) {
    expectPlainOrder(n, 3, Weights::None);
    expectPlainOrder(n, 3, Weights::Fractions);
  }
}

TEST(RowOrderTest, CasesOfOneBucketComeAsThePlainSortPutsThem) {
  expectPlainOrder(8000, 2, Weights::None);
  expectPlainOrder(8000, 256, Weights::Whole);
  expectPlainOrder(8000, 2, Weights::Fractions);
}

TEST(RowOrderTest, CasesOfManyBucketsComeAsThePlainSortPutsThem) {
  expectPlainOrder(66000, 2, Weights::None);
  expectPlainOrder(66000, 100, Weights::Whole);
  expectPlainOrder(66000, 256, Weights::Fractions);
}

TEST(RowOrderTest, CasesWithoutCodesHaveCodeZero) {
  const std::vector<double> values{3, 1, 3, 2};
  SortedRows rows;
  rows.Fill({values}, 1, true);
  EXPECT_EQ(rows.CountDistinctValues(), 3U);
  compareRows(rowsOf(rows), {{1, 0, 1}, {2, 0, 1}, {3, 0, 2}});
}

TEST(RowOrderTest, WeightsUpToTheLastThatPackedRowsHoldAreExact) {
  const std::vector<double> values{5, 5, 4};
  const std::vector<double> weights{4294967290.0, 4.0, 1.0};
  const std::vector<std::uint16_t> codes{0, 0, 0};
  SortedRows rows;
  rows.Fill({values, codes.data(), weights.data()}, 1, true);
  compareRows(rowsOf(rows), {{4, 0, 1}, {5, 0, 4294967294.0}});
}

}  // namespace
}  // namespace mcbinning_tests
