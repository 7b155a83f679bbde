#include "toolkit/text/number_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace mcbin {
namespace {

TEST(NumberText, NumbersAreShortest) {
  EXPECT_EQ(shortestNumber(0.1), "0.1");
  EXPECT_EQ(shortestNumber(-0.0), "0");
  EXPECT_EQ(shortestNumber(1e21), "1e+21");
  EXPECT_EQ(shortestNumber(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(weightText(1234567.0), "1234567");
  EXPECT_EQ(weightText(2.5), "2.5");
  EXPECT_EQ(fixedNumber(0.12345, 4), "0.1235");
}

TEST(NumberText, SharesHaveOneDigit) {
  EXPECT_EQ(shareText(1.0, 8.0), "12.5%");
  EXPECT_EQ(shareText(0.0, 8.0), "0.0%");
  EXPECT_EQ(shareText(0.0, 0.0), "-");
  EXPECT_EQ(shareText(3e307, 1.2e308), "25.0%");
}

}  // namespace
}  // namespace mcbin
