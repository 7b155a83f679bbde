#include "toolkit/rounds/first_borders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/toolkit/support/memory_batches.h"
#include "toolkit/fit/column_cases.h"

namespace mcbin {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(FirstBorders, FewValuesAreAllBorders) {
  EXPECT_EQ(firstBorders({3, kNaN, 1, 3, 2}, 2), (std::vector<double>{1, 2, 3}));
  EXPECT_TRUE(firstBorders({kNaN}, 2).empty());
}

TEST(FirstBorders, ManyValuesGiveQuantilesFewerForMoreCategories) {
  std::vector<double> sample(100000);
  for (std::size_t i = 0; i < sample.size(); ++i) sample[i] = static_cast<double>(i * 7 % 100000);
  for (const auto& [categories, most] : {std::pair{1, 8192}, {2, 4096}, {8, 1024}, {256, 64}}) {
    const auto borders = firstBorders(sample, static_cast<std::size_t>(categories));
    EXPECT_EQ(borders.size(), static_cast<std::size_t>(most));
    EXPECT_NEAR(borders[borders.size() / 2], 50000, 1000);
  }
}

TEST(SampledCases, RemembersSomeThousandsThatAreSpreadOverAll) {
  std::vector<double> x(100000);
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i);
  testing::MemoryBatches batches({"x"}, {x}, 999);
  ColumnCases cases(batches, {});
  SampledCases sampled(cases);
  while (sampled.NextCase()) {
  }
  const std::vector<double>& sample = sampled.Sample(0);
  EXPECT_GT(sample.size(), 8192U);
  EXPECT_LE(sample.size(), 16384U);
  for (std::size_t i = 1; i < sample.size(); ++i) EXPECT_EQ(sample[i] - sample[i - 1], 8) << i;
}

}  // namespace
}  // namespace mcbin
