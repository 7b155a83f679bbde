#include "data/row_key.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "random/random_runs.h"

namespace {

using MCBinning::isSameValue;
using MCBinning::keyOf;
using MCBinning::valueOf;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiniest = std::numeric_limits<double>::denorm_min();

TEST(RowKeyTest, KeysAscendWithTheValuesAndNaNComesLast) {
  const double ascending[] = {-kInf,    -1e308, -1.0,  -kTiniest, 0.0,
                              kTiniest, 1.0,    1e308, kInf,      kNaN};
  for (std::size_t i = 0; i + 1 < std::size(ascending); ++i) {
    EXPECT_LT(keyOf(ascending[i]), keyOf(ascending[i + 1])) << i;
  }
}

TEST(RowKeyTest, ZerosHaveOneKeyAndSoHaveAllNaNs) {
  EXPECT_EQ(keyOf(-0.0), keyOf(0.0));
  EXPECT_EQ(keyOf(0.0), MCBinning::kZeroKey);
  EXPECT_EQ(keyOf(-kNaN), keyOf(kNaN));
  EXPECT_EQ(keyOf(std::bit_cast<double>(std::uint64_t{0xfff0000000000001})), keyOf(kNaN));
}

TEST(RowKeyTest, NaNIsNeverTheSameValue) {
  EXPECT_FALSE(isSameValue(keyOf(kNaN), keyOf(kNaN)));
  EXPECT_TRUE(isSameValue(keyOf(kInf), keyOf(kInf)));
  EXPECT_TRUE(isSameValue(keyOf(-0.0), keyOf(0.0)));
  EXPECT_FALSE(isSameValue(keyOf(0.0), keyOf(kTiniest)));
}

TEST(RowKeyTest, EveryNumberComesBackFromItsKey) {
  mcbinning_tests::forRandomRuns(10000, [](mcbinning_tests::Choices& choices) {
    const double value = choices.AnyBits();
    const double back = valueOf(keyOf(value));
    EXPECT_TRUE(back == value || (std::isnan(back) && std::isnan(value))) << value;
  });
}

}  // namespace
