#include "numerics/power_of_3.h"

#include <gtest/gtest.h>

#include "plain_model/correct_rounding.h"

namespace MCBinning {
namespace {

TEST(PowerOf3Test, EveryPowerIsTheNearestDouble) {
  for (std::size_t exponent = 0; exponent <= kLargestPowerOf3; ++exponent) {
    EXPECT_EQ(powerOf3(exponent), plain_model::nearestPowerOf3(static_cast<int>(exponent)))
        << exponent;
  }
}

// 3^34, of 54 digits, lies halfway between two doubles.
TEST(PowerOf3Test, TieGoesToTheEvenDouble) { EXPECT_EQ(powerOf3(34), 16677181699666568.0); }

}  // namespace
}  // namespace MCBinning
