#include "data/category_code.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using MCBinning::IsCategoryCode;
using MCBinning::TruncatedCode;

constexpr int kNoCode = std::numeric_limits<int>::min();

TEST(CategoryCodeTest, CellsAreTruncatedTowardsZero) {
  EXPECT_EQ(TruncatedCode(0.0), 0);
  EXPECT_EQ(TruncatedCode(-0.5), 0);
  EXPECT_EQ(TruncatedCode(-1.0), -1);
  EXPECT_EQ(TruncatedCode(-1.5), -1);
  EXPECT_EQ(TruncatedCode(-2.0), -2);
  EXPECT_EQ(TruncatedCode(255.999), 255);
  EXPECT_EQ(TruncatedCode(2147483647.5), 2147483647);
  EXPECT_EQ(TruncatedCode(-2147483648.5), kNoCode);
}

TEST(CategoryCodeTest, CellsOutside32BitsAreNoCodes) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double cell : {2147483648.0, 4294967295.0, -2147483649.0, 1e300, -1e300, infinity,
                            -infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(TruncatedCode(cell), kNoCode) << cell;
  }
  EXPECT_FALSE(IsCategoryCode(kNoCode));
}

TEST(CategoryCodeTest, CodesRunFrom0To255) {
  EXPECT_TRUE(IsCategoryCode(0));
  EXPECT_TRUE(IsCategoryCode(255));
  EXPECT_FALSE(IsCategoryCode(256));
  EXPECT_FALSE(IsCategoryCode(-1));
}

}  // namespace
