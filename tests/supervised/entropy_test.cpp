#include "supervised/entropy.h"

#include <gtest/gtest.h>

#include <cmath>

namespace MCBinning {
namespace {

// From a braced list of counts.
double bitsOf(const ClassCounts& counts) { return entropyOf(counts); }
double weightedBitsOf(const ClassCounts& left, const ClassCounts& right) {
  return weightedEntropy(left, right);
}

TEST(EntropyTest, EvenClassesGiveTheLogOfTheirNumber) {
  EXPECT_EQ(bitsOf({2, 1, 1}), 1.0);
  EXPECT_EQ(bitsOf({8, 2, 2, 2, 2}), 2.0);
}

TEST(EntropyTest, SumsInCodeOrder) {
  const double expected = -(0.25 * std::log2(0.25) + 0.75 * std::log2(0.75));
  EXPECT_EQ(bitsOf({4, 1, 3}), expected);
}

TEST(EntropyTest, EmptyTotalGivesZero) { EXPECT_EQ(bitsOf({0, 0, 0}), 0.0); }

TEST(EntropyTest, OneClassGivesPositiveZero) {
  EXPECT_EQ(bitsOf({3, 0, 3}), 0.0);
  EXPECT_FALSE(std::signbit(bitsOf({3, 0, 3})));
  EXPECT_FALSE(std::signbit(bitsOf({3, 3, 0})));
}

TEST(EntropyTest, NegativeElementGivesNaN) { EXPECT_TRUE(std::isnan(bitsOf({1, -0.25, 1.25}))); }

TEST(EntropyTest, WeighsThePartsByTheirTotals) {
  EXPECT_EQ(weightedBitsOf({2, 1, 1}, {2, 0, 2}), 0.5);
  EXPECT_EQ(weightedBitsOf({4, 2, 2}, {0, 0, 0}), 1.0);
}

TEST(EntropyTest, TwoEmptyPartsGiveNaN) { EXPECT_TRUE(std::isnan(weightedBitsOf({0, 0}, {0, 0}))); }

}  // namespace
}  // namespace MCBinning
