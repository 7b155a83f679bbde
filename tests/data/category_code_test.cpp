#include "data/category_code.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using MCBinning::isCategoryCode;
using MCBinning::truncatedCode;

constexpr int kNoCode = std::numeric_limits<int>::min();

TEST(CategoryCodeTest, CellsAreTruncatedTowardsZero) {
  EXPECT_EQ(truncatedCode(0.0), 0);
  EXPECT_EQ(truncatedCode(-0.5), 0);
  EXPECT_EQ(truncatedCode(-1.0), -1);
  EXPECT_EQ(truncatedCode(-1.5), -1);
  EXPECT_EQ(truncatedCode(-2.0), -2);
  EXPECT_EQ(truncatedCode(255.999), 255);
  EXPECT_EQ(truncatedCode(2147483647.5), 2147483647);
  EXPECT_EQ(truncatedCode(-2147483648.5), kNoCode);
}

TEST(CategoryCodeTest, CellsOutside32BitsAreNoCodes) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double cell : {2147483648.0, 4294967295.0, -2147483649.0, 1e300, -1e300, infinity,
                            -infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(truncatedCode(cell), kNoCode) << cell;
  }
  EXPECT_FALSE(isCategoryCode(kNoCode));
}

TEST(CategoryCodeTest, CodesRunFrom0To255) {
  EXPECT_TRUE(isCategoryCode(0));
  EXPECT_TRUE(isCategoryCode(255));
  EXPECT_FALSE(isCategoryCode(256));
  EXPECT_FALSE(isCategoryCode(-1));
}

}  // namespace
