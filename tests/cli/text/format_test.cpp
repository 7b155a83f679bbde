#include "text/format.h"

#include <gtest/gtest.h>

#include <limits>

namespace mcbin {
namespace {

TEST(Format, NumbersAreShortest) {
  EXPECT_EQ(shortestNumber(0.1), "0.1");
  EXPECT_EQ(shortestNumber(-0.0), "0");
  EXPECT_EQ(shortestNumber(1e21), "1e+21");
  EXPECT_EQ(shortestNumber(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(weightText(1234567.0), "1234567");
  EXPECT_EQ(weightText(2.5), "2.5");
  EXPECT_EQ(fixedNumber(0.12345, 4), "0.1235");
}

TEST(Format, SharesHaveOneDigit) {
  EXPECT_EQ(shareText(1.0, 8.0), "12.5%");
  EXPECT_EQ(shareText(0.0, 8.0), "0.0%");
  EXPECT_EQ(shareText(0.0, 0.0), "-");
  EXPECT_EQ(shareText(3e307, 1.2e308), "25.0%");
}

TEST(Format, IntervalsAreOpenAtInfinity) {
  const std::vector<double> cuts = {3.5, 7.0};
  EXPECT_EQ(intervalText(cuts, ClosedSide::Right, 0), "(-inf, 3.5]");
  EXPECT_EQ(intervalText(cuts, ClosedSide::Right, 1), "(3.5, 7]");
  EXPECT_EQ(intervalText(cuts, ClosedSide::Right, 2), "(7, inf)");
  EXPECT_EQ(intervalText(cuts, ClosedSide::Left, 0), "(-inf, 3.5)");
  EXPECT_EQ(intervalText(cuts, ClosedSide::Left, 1), "[3.5, 7)");
  EXPECT_EQ(intervalText(cuts, ClosedSide::Left, 2), "[7, inf)");
  EXPECT_EQ(intervalText({}, ClosedSide::Right, 0), "(-inf, inf)");
}

}  // namespace
}  // namespace mcbin
