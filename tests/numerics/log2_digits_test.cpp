#include "numerics/log2_digits.h"

#include <gtest/gtest.h>

#include <cmath>

#include "plain_model/correct_rounding.h"
#include "random/random_runs.h"

namespace MCBinning {
namespace {

using mcbinning_tests::Choices;

constexpr std::uint64_t kOne = std::uint64_t{1} << 52;

void expectNearest(int exponent, std::uint64_t significand, std::size_t words) {
  const double x = std::ldexp(static_cast<double>(significand), exponent - 52);
  EXPECT_EQ(log2ByDigits(exponent, significand, words), plain_model::nearestLog2(x))
      << exponent << ' ' << significand;
}

TEST(Log2DigitsTest, SixWordsGiveTheNearestDouble) {
  mcbinning_tests::forRandomRuns(mcbinning_tests::RandomRuns(2000), [](Choices& choices) {
    expectNearest(choices.Between(-1022, 1023), kOne + 1 + (choices.Bits(8) >> 12) % (kOne - 1), 6);
  });
}

// The logarithms begin with 52 digits that tell nothing.
TEST(Log2DigitsTest, NeighboursOfOneGiveTheNearestDouble) {
  for (std::uint64_t distance = 1; distance <= 20; ++distance) {
    expectNearest(0, kOne + distance, 6);
    expectNearest(-1, 2 * kOne - distance, 6);
  }
}

// For logarithms this near to 0 two words are always too few, four at times.
TEST(Log2DigitsTest, WordsThatAreTooFewAreMadeMore) {
  for (std::uint64_t distance = 1; distance <= 200; ++distance) {
    expectNearest(0, kOne + distance, 2);
    expectNearest(-1, 2 * kOne - distance, 2);
  }
}

}  // namespace
}  // namespace MCBinning
