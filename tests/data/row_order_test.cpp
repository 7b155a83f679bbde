#include "data/row_order.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "data/sorted_rows.h"
#include "support/plain_rows.h"

namespace {

using MCBinning::SortedRows;
using mcbinning_tests::PlainCases;
using Random = std::mt19937_64;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiniest = std::numeric_limits<double>::denorm_min();

struct Distribution {
  const char* name;
  std::function<double(std::size_t i, std::size_t n, Random&)> value;
};

double uniform(Random& random) { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }

const std::vector<Distribution>& distributions() {
  static const std::vector<Distribution> all = {
      {"uniform", [](std::size_t, std::size_t, Random& r) { return uniform(r); }},
      {"both signs",
       [](std::size_t, std::size_t, Random& r) { return std::normal_distribution<double>()(r); }},
      {"one giant tie", [](std::size_t, std::size_t, Random&) { return 7.0; }},
      {"a giant tie among others",
       [](std::size_t, std::size_t, Random& r) { return r() % 2 == 0 ? 0.5 : uniform(r); }},
      {"ties everywhere",
       [](std::size_t, std::size_t, Random& r) { return static_cast<double>(r() % 100); }},
      {"ten thousand values",
       [](std::size_t, std::size_t, Random& r) { return static_cast<double>(r() % 10000); }},
      {"money",
       [](std::size_t, std::size_t, Random& r) {
         return std::round(std::exp(8 + std::normal_distribution<double>()(r)) * 100) / 100;
       }},
      {"sorted", [](std::size_t i, std::size_t, Random&) { return static_cast<double>(i); }},
      {"reversed",
       [](std::size_t i, std::size_t n, Random&) { return static_cast<double>(n - i); }},
      {"saw", [](std::size_t i, std::size_t, Random&) { return static_cast<double>(i % 257); }},
      {"denormals", [](std::size_t, std::size_t,
                       Random& r) { return static_cast<double>(r() % 5000) * kTiniest; }},
      {"crowded beside a far one",
       [](std::size_t, std::size_t, Random& r) {
         return r() % 50 == 0 ? 1e300 : 1000.0 + 1e-9 * uniform(r);
       }},
      {"any bits", [](std::size_t, std::size_t,
                      Random& r) { return std::bit_cast<double>(std::uint64_t{r()}); }},
      {"specials",
       [](std::size_t, std::size_t, Random& r) {
         const double specials[] = {-kInf, kInf, kNaN, -kNaN, 0.0, -0.0, kTiniest, -kTiniest, 1.0};
         return specials[r() % 9];
       }},
      {"missing", [](std::size_t, std::size_t,
                     Random& r) { return r() % 3 == 0 ? MCMV::gMissingValue : uniform(r); }},
      {"all missing", [](std::size_t, std::size_t, Random&) { return MCMV::gMissingValue; }},
  };
  return all;
}

enum class Weights { None, Whole, Fractions };

PlainCases makeCases(const Distribution& distribution, std::size_t n, unsigned categories,
                     Weights weights, Random& random) {
  PlainCases cases;
  for (std::size_t i = 0; i < n; ++i) {
    cases.values.push_back(distribution.value(i, n, random));
    cases.codes.push_back(static_cast<std::uint16_t>(random() % categories));
    if (weights == Weights::Whole) {
      cases.weights.push_back(static_cast<double>(1 + random() % 9));
    } else if (weights == Weights::Fractions) {
      cases.weights.push_back(uniform(random) + 1e-3);
    }
  }
  return cases;
}

void expectRows(const SortedRows& rows, const std::vector<SortedRows::Row>& expected) {
  ASSERT_EQ(rows.Size(), expected.size());
  for (std::size_t row = 0; row < expected.size(); ++row) {
    SCOPED_TRACE(row);
    const SortedRows::Row& plain = expected[row];
    ASSERT_EQ(std::isnan(rows.Value(row)), std::isnan(plain.value));
    if (!std::isnan(plain.value)) {
      ASSERT_EQ(std::bit_cast<std::uint64_t>(rows.Value(row)),
                std::bit_cast<std::uint64_t>(plain.value));
    }
    ASSERT_EQ(rows.Code(row), plain.code);
    ASSERT_EQ(rows.Weight(row), plain.weight);
  }
}

void expectPlainOrder(std::size_t n, unsigned categories, Weights weights, std::uint64_t seed) {
  SortedRows rows;  // used again and again, as a table uses it
  for (const Distribution& distribution : distributions()) {
    SCOPED_TRACE(std::string(distribution.name) + ", seed " + std::to_string(seed));
    Random random(seed);
    const PlainCases cases = makeCases(distribution, n, categories, weights, random);
    const bool wholeWeights = weights != Weights::Fractions;
    rows.Fill(cases.Columns(), categories, wholeWeights);
    const auto plain = mcbinning_tests::plainRows(cases);
    EXPECT_EQ(rows.CountDistinctValues(), mcbinning_tests::distinctValues(plain));
    if (!wholeWeights) {
      expectRows(rows, plain);
    }
    rows.Merge();
    expectRows(rows, mcbinning_tests::mergedRows(plain));
  }
}

TEST(RowOrderTest, FewCasesComeAsThePlainSortPutsThem) {
  for (std::size_t n = 0; n < 40; ++n) {
    expectPlainOrder(n, 3, Weights::None, n);
    expectPlainOrder(n, 3, Weights::Fractions, n);
  }
}

TEST(RowOrderTest, CasesOfOneBucketComeAsThePlainSortPutsThem) {
  expectPlainOrder(8000, 2, Weights::None, 1);
  expectPlainOrder(8000, 256, Weights::Whole, 2);
  expectPlainOrder(8000, 2, Weights::Fractions, 3);
}

TEST(RowOrderTest, CasesOfManyBucketsComeAsThePlainSortPutsThem) {
  expectPlainOrder(66000, 2, Weights::None, 4);
  expectPlainOrder(66000, 100, Weights::Whole, 5);
  expectPlainOrder(66000, 256, Weights::Fractions, 6);
}

TEST(RowOrderTest, CasesWithoutCodesHaveCodeZero) {
  const std::vector<double> values{3, 1, 3, 2};
  SortedRows rows;
  rows.Fill({values}, 1, true);
  EXPECT_EQ(rows.CountDistinctValues(), 3U);
  expectRows(rows, {{1, 0, 1}, {2, 0, 1}, {3, 0, 2}});
}

TEST(RowOrderTest, WeightsUpToTheLastThatPackedRowsHoldAreExact) {
  const std::vector<double> values{5, 5, 4};
  const std::vector<double> weights{4294967290.0, 4.0, 1.0};
  const std::vector<std::uint16_t> codes{0, 0, 0};
  SortedRows rows;
  rows.Fill({values, codes.data(), weights.data()}, 1, true);
  expectRows(rows, {{4, 0, 1}, {5, 0, 4294967294.0}});
}

}  // namespace
