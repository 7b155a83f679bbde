#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "mcbinning/user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumericIntervalTest, DefaultIsTheSingleValueZero) {
  const BINNumericInterval interval;
  EXPECT_EQ(interval.GetLeftEnd(), 0.0);
  EXPECT_EQ(interval.GetRightEnd(), 0.0);
  EXPECT_FALSE(interval.IsEmpty());
  EXPECT_TRUE(interval.Contains(0.0));
  EXPECT_TRUE(interval.Contains(-0.0));
  EXPECT_FALSE(interval.Contains(DBL_MIN));
}

TEST(NumericIntervalTest, UpToFiveContainsFiveAndShowsMinusInfinity) {
  const BINNumericInterval interval(5.0, true);
  EXPECT_TRUE(interval.Contains(5.0));
  EXPECT_FALSE(interval.Contains(5.1));
  EXPECT_TRUE(interval.Contains(-DBL_MAX));
  EXPECT_TRUE(interval.IsLeftEndInfinite());
  EXPECT_FALSE(interval.IsRightEndInfinite());
  EXPECT_EQ(interval.GetLeftEnd(), -DBL_MAX);
  EXPECT_EQ(DisplayOf(interval), Flushing("BINNumericInterval: ( -infinity, 5 ]\n"));
}

TEST(NumericIntervalTest, FromFiveContainsFiveAndShowsInfinity) {
  const BINNumericInterval interval(5.0, false);
  EXPECT_TRUE(interval.Contains(5.0));
  EXPECT_FALSE(interval.Contains(4.9));
  EXPECT_TRUE(interval.Contains(DBL_MAX));
  EXPECT_FALSE(interval.IsLeftEndInfinite());
  EXPECT_TRUE(interval.IsRightEndInfinite());
  EXPECT_EQ(interval.GetRightEnd(), DBL_MAX);
  EXPECT_EQ(DisplayOf(interval), Flushing("BINNumericInterval: [ 5, infinity )\n"));
}

TEST(NumericIntervalTest, DisplayOfTwoFiniteEndsUsesTheStreamsFormat) {
  EXPECT_EQ(DisplayOf(BINNumericInterval(-1.23456789, 1e10)),
            Flushing("BINNumericInterval: [ -1.23457, 1e+10 ]\n"));
}

TEST(NumericIntervalTest, TrueInfinitiesShowAsInfinityButAreNotTheStandIn) {
  const BINNumericInterval interval(-kInfinity, kInfinity);
  EXPECT_FALSE(interval.IsLeftEndInfinite());
  EXPECT_FALSE(interval.IsRightEndInfinite());
  EXPECT_TRUE(interval.Contains(kInfinity));
  EXPECT_EQ(DisplayOf(interval), Flushing("BINNumericInterval: ( -infinity, infinity )\n"));
}

TEST(NumericIntervalTest, NaNIsNeverContainedAndMakesSettersAnswerFalse) {
  BINNumericInterval interval(1.0, 2.0);
  EXPECT_FALSE(interval.Contains(kNaN));
  EXPECT_FALSE(interval.SetLeftEnd(kNaN));
  EXPECT_TRUE(std::isnan(interval.GetLeftEnd()));
  EXPECT_FALSE(interval.SetRightEnd(2.0));
  EXPECT_FALSE(interval.Contains(1.5));
  EXPECT_FALSE(interval.IsEmpty());
  EXPECT_FALSE(interval == interval);
}

TEST(NumericIntervalTest, SettersAnswerWhetherAnythingIsBetweenTheEnds) {
  BINNumericInterval interval(1.0, 5.0);
  EXPECT_TRUE(interval.SetLeftEnd(5.0));
  EXPECT_FALSE(interval.SetLeftEnd(6.0));
  EXPECT_TRUE(interval.SetRightEnd(6.0));
  EXPECT_FALSE(interval.SetRightEnd(5.0));
}

TEST(NumericIntervalTest, EqualityComparesBothEndsExactly) {
  EXPECT_TRUE(BINNumericInterval(0.0, 2.0) == BINNumericInterval(-0.0, 2.0));
  EXPECT_FALSE(BINNumericInterval(1.0, 2.0) == BINNumericInterval(1.0, std::nextafter(2.0, 3.0)));
  EXPECT_FALSE(BINNumericInterval(1.0, 2.0) == BINNumericInterval(std::nextafter(1.0, 0.0), 2.0));
}

TEST(StringIntervalTest, DefaultContainsNothing) {
  const BINStringInterval interval;
  EXPECT_EQ(interval.GetLeftEnd(), "");
  EXPECT_EQ(interval.GetRightEnd(), "");
  EXPECT_FALSE(interval.IsLeftEndIncluded());
  EXPECT_FALSE(interval.IsRightEndIncluded());
  EXPECT_TRUE(interval.IsEmpty());
  EXPECT_FALSE(interval.Contains(""));
  EXPECT_FALSE(interval.Contains("a"));
}

TEST(StringIntervalTest, AnEndIsContainedWhenItIsIncluded) {
  const BINStringInterval fromLeft("b", true, "d", false);
  EXPECT_TRUE(fromLeft.Contains("b"));
  EXPECT_FALSE(fromLeft.Contains("d"));
  const BINStringInterval upToRight("b", false, "d", true);
  EXPECT_FALSE(upToRight.Contains("b"));
  EXPECT_TRUE(upToRight.Contains("d"));
}

TEST(StringIntervalTest, BytesAreOrderedAsUnsigned) {
  const BINStringInterval interval("a", true, "\xff", true);
  EXPECT_TRUE(interval.Contains("\xc3\xa9"));
  EXPECT_TRUE(interval.Contains(std::string("b\0c", 3)));
}

TEST(StringIntervalTest, DisplayShowsTheFlagsAsBrackets) {
  EXPECT_EQ(DisplayOf(BINStringInterval("b", false, "d", true)),
            Flushing("BINStringInterval: ( b, d ]\n"));
  EXPECT_EQ(DisplayOf(BINStringInterval("b", true, "d", false)),
            Flushing("BINStringInterval: [ b, d )\n"));
}

}  // namespace
