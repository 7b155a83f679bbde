#include "data/row_key.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "random/random_runs.h"

namespace {

using MCBinning::IsSameValue;
using MCBinning::KeyOf;
using MCBinning::ValueOf;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiniest = std::numeric_limits<double>::denorm_min();

TEST(RowKeyTest, KeysAscendWithTheValuesAndNaNComesLast) {
  const double ascending[] = {-kInf,    -1e308, -1.0,  -kTiniest, 0.0,
                              kTiniest, 1.0,    1e308, kInf,      kNaN};
  for (std::size_t i = 0; i + 1 < std::size(ascending); ++i) {
    EXPECT_LT(KeyOf(ascending[i]), KeyOf(ascending[i + 1])) << i;
  }
}

TEST(RowKeyTest, ZerosHaveOneKeyAndSoHaveAllNaNs) {
  EXPECT_EQ(KeyOf(-0.0), KeyOf(0.0));
  EXPECT_EQ(KeyOf(0.0), MCBinning::kZeroKey);
  EXPECT_EQ(KeyOf(-kNaN), KeyOf(kNaN));
  EXPECT_EQ(KeyOf(std::bit_cast<double>(std::uint64_t{0xfff0000000000001})), KeyOf(kNaN));
}

TEST(RowKeyTest, NaNIsNeverTheSameValue) {
  EXPECT_FALSE(IsSameValue(KeyOf(kNaN), KeyOf(kNaN)));
  EXPECT_TRUE(IsSameValue(KeyOf(kInf), KeyOf(kInf)));
  EXPECT_TRUE(IsSameValue(KeyOf(-0.0), KeyOf(0.0)));
  EXPECT_FALSE(IsSameValue(KeyOf(0.0), KeyOf(kTiniest)));
}

TEST(RowKeyTest, EveryNumberComesBackFromItsKey) {
  mcbinning_tests::forRandomRuns(10000, [](mcbinning_tests::Choices& choices) {
    const double value = choices.AnyBits();
    const double back = ValueOf(KeyOf(value));
    EXPECT_TRUE(back == value || (std::isnan(back) && std::isnan(value))) << value;
  });
}

}  // namespace
