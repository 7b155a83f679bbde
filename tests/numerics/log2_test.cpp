// Random arguments too; MCB_RUNS chooses how many thousands of them.
#include "numerics/log2.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "plain_model/correct_rounding.h"
#include "random/random_runs.h"

namespace MCBinning {
namespace {

using mcbinning_tests::Choices;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kLeastExponent = -1074;
constexpr int kEndOfExponents = 1024;

void expectNearest(double x) {
  const double nearest = plain_model::nearestLog2WithoutShortcut(x);
  ASSERT_EQ(roundedLog2(x), nearest) << std::hexfloat << x;
  ASSERT_EQ(plain_model::nearestLog2(x), nearest) << std::hexfloat << x;
}

TEST(Log2Test, ZeroGivesMinusInfinity) {
  EXPECT_EQ(roundedLog2(0.0), -kInfinity);
  EXPECT_EQ(roundedLog2(-0.0), -kInfinity);
}

TEST(Log2Test, NoPositiveNumberGivesNaN) {
  for (const double x : {-std::numeric_limits<double>::denorm_min(), -0.5, -1.0, -1e300, -kInfinity,
                         std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(std::isnan(roundedLog2(x))) << x;
  }
}

TEST(Log2Test, InfinityGivesInfinity) { EXPECT_EQ(roundedLog2(kInfinity), kInfinity); }

TEST(Log2Test, OneGivesPositiveZero) {
  EXPECT_EQ(roundedLog2(1.0), 0.0);
  EXPECT_FALSE(std::signbit(roundedLog2(1.0)));
}

TEST(Log2Test, PowersOfTwoGiveTheirExponents) {
  for (int exponent = kLeastExponent; exponent < kEndOfExponents; ++exponent) {
    EXPECT_EQ(roundedLog2(std::ldexp(1.0, exponent)), exponent);
  }
}

TEST(Log2Test, NeighboursOfPowersOfTwoGiveTheNearestDouble) {
  for (int exponent = kLeastExponent; exponent < kEndOfExponents; ++exponent) {
    const std::uint64_t power = std::bit_cast<std::uint64_t>(std::ldexp(1.0, exponent));
    for (std::uint64_t distance = 1; distance <= 20 && distance < power; ++distance) {
      expectNearest(std::bit_cast<double>(power - distance));
      expectNearest(std::bit_cast<double>(power + distance));
    }
  }
}

TEST(Log2Test, BordersOfTheTablesIntervalsGiveTheNearestDouble) {
  for (int interval = 0; interval <= 1024; ++interval) {
    const double border = 0.5 + interval / 512.0;
    for (const double x : {border, std::nextafter(border, 0.0), std::nextafter(border, 4.0)}) {
      expectNearest(x);
      expectNearest(x * 0x1p-30);
    }
  }
}

TEST(Log2Test, BordersOfWhatIsNearOneGiveTheNearestDouble) {
  for (const double border : {1.0 - 0x1p-10, 1.0 + 0x1p-10}) {
    for (int step = -1000; step <= 1000; ++step) {
      expectNearest(border + step * 0x1p-53);
    }
  }
}

// By less than 2^-24 of the distance of two doubles these miss being halfway between them.
TEST(Log2Test, HardCasesGiveTheNearestDouble) {
  for (const double x :
       {0x1.3944755d38c91p-2, 0x1.eec100f158f3dp-1, 0x1.0b7663f8df4c9p-1, 0x1.151644fbfebadp-1}) {
    expectNearest(x);
  }
}

// Its logarithm has more than 50 equal digits after the last one of a double.
TEST(Log2Test, HardestMantissaGivesTheNearestDoubleWithEveryExponent) {
  for (int exponent = kLeastExponent; exponent < kEndOfExponents; ++exponent) {
    expectNearest(std::ldexp(0x1.61555f75885b4p+0, exponent));
  }
}

double randomArgument(Choices& choices) {
  switch (choices.Below(6)) {
    case 0:  // any
      return std::bit_cast<double>(choices.Bits(8) % std::bit_cast<std::uint64_t>(kInfinity));
    case 1:  // subnormal
      return std::bit_cast<double>(choices.Bits(8) >> choices.Between(12, 63));
    case 2:  // a whole number
      return static_cast<double>(1 + (choices.Bits(8) >> choices.Between(11, 63)));
    case 3: {  // a share
      const auto total = static_cast<double>(1 + (choices.Bits(8) >> choices.Between(32, 60)));
      return std::ceil((1.0 - choices.Unit()) * total) / total;
    }
    case 4:  // near 1
      return 1.0 + (choices.Unit() - 0.5) * std::ldexp(1.0, -choices.Below(50));
    default:  // of the size that shares have
      return (1.0 + choices.Unit()) * std::ldexp(1.0, -choices.Between(1, 20));
  }
}

TEST(Log2Test, RandomArgumentsGiveTheNearestDouble) {
  mcbinning_tests::forRandomRuns(mcbinning_tests::RandomRuns(2000), [](Choices& choices) {
    for (int i = 0; i < 1000; ++i) {
      if (const double x = randomArgument(choices); x > 0.0) {
        expectNearest(x);
      }
    }
  });
}

TEST(Log2Test, QuickLogarithmsErrByNoMoreThanIsSaid) {
  mcbinning_tests::forRandomRuns(mcbinning_tests::RandomRuns(2000), [](Choices& choices) {
    for (int i = 0; i < 1000; ++i) {
      if (const double x = randomArgument(choices); x > 0.0) {
        const double rounded = roundedLog2(x);
        ASSERT_LE(std::fabs(quickLog2(x) - rounded), 0x1p-53 * (2.0 * std::fabs(rounded) + 2.0))
            << std::hexfloat << x;
      }
    }
  });
  EXPECT_EQ(quickLog2(0.0), -kInfinity);
  EXPECT_EQ(quickLog2(kInfinity), kInfinity);
  EXPECT_TRUE(std::isnan(quickLog2(-1.0)));
}

}  // namespace
}  // namespace MCBinning
