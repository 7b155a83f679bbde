#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

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

TEST(NumericIntervalTest, TwoToOneIsEmpty) {
  const BINNumericInterval interval(2.0, 1.0);
  EXPECT_TRUE(interval.IsEmpty());
  EXPECT_FALSE(interval.Contains(1.5));
}

TEST(NumericIntervalTest, SettersStoreAnInvertedEndAndAnswerFalse) {
  BINNumericInterval interval(1.0, 2.0);
  EXPECT_FALSE(interval.SetLeftEnd(3.0));
  EXPECT_EQ(interval.GetLeftEnd(), 3.0);
  EXPECT_FALSE(interval.SetRightEnd(2.5));
  EXPECT_EQ(interval.GetRightEnd(), 2.5);
  EXPECT_TRUE(interval.SetRightEnd(3.0));
  EXPECT_TRUE(interval.SetLeftEnd(3.0));
  EXPECT_FALSE(interval.IsEmpty());
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

TEST(StringIntervalTest, OpenLeftClosedRight) {
  const BINStringInterval interval("b", false, "d", true);
  EXPECT_TRUE(interval.Contains("c"));
  EXPECT_TRUE(interval.Contains("d"));
  EXPECT_FALSE(interval.Contains("b"));
  EXPECT_FALSE(interval.Contains("e"));
  EXPECT_TRUE(interval.Contains("ba"));
  EXPECT_FALSE(interval.Contains("da"));
  EXPECT_FALSE(interval.Contains(""));
  EXPECT_FALSE(interval.Contains("C"));
  EXPECT_FALSE(interval.IsEmpty());
}

TEST(StringIntervalTest, ClosedLeftOpenRight) {
  const BINStringInterval interval("b", true, "d", false);
  EXPECT_TRUE(interval.Contains("b"));
  EXPECT_FALSE(interval.Contains("d"));
}

TEST(StringIntervalTest, EqualEndsAreNotEmptyOnlyWhenBothAreIncluded) {
  const BINStringInterval single("b", true, "b", true);
  EXPECT_FALSE(single.IsEmpty());
  EXPECT_TRUE(single.Contains("b"));
  EXPECT_TRUE(BINStringInterval("b", true, "b", false).IsEmpty());
  EXPECT_TRUE(BINStringInterval("b", false, "b", true).IsEmpty());
  EXPECT_TRUE(BINStringInterval("b", false, "b", false).IsEmpty());
}

TEST(StringIntervalTest, AHalfIncludedSingleEndIsSearchedByTheSameSteps) {
  EXPECT_FALSE(BINStringInterval("b", true, "b", false).Contains("b"));
  EXPECT_FALSE(BINStringInterval("b", false, "b", true).Contains("b"));
  EXPECT_FALSE(BINStringInterval("d", true, "b", true).Contains("c"));
  EXPECT_TRUE(BINStringInterval("d", true, "b", true).IsEmpty());
}

TEST(StringIntervalTest, BytesAreOrderedAsUnsigned) {
  const BINStringInterval interval("a", true, "\xff", true);
  EXPECT_TRUE(interval.Contains("\xc3\xa9"));
  EXPECT_TRUE(interval.Contains(std::string("b\0c", 3)));
}

TEST(StringIntervalTest, SettersStoreAndAnswerWhetherTheIntervalIsNotEmpty) {
  BINStringInterval interval("b", true, "d", true);
  EXPECT_FALSE(interval.SetLeftEnd("e", true));
  EXPECT_EQ(interval.GetLeftEnd(), "e");
  EXPECT_TRUE(interval.SetRightEnd("e", true));
  EXPECT_FALSE(interval.SetRightEnd("e", false));
  EXPECT_FALSE(interval.IsRightEndIncluded());
  EXPECT_FALSE(interval.SetLeftEnd("e", false));
  EXPECT_FALSE(interval.IsLeftEndIncluded());
  EXPECT_TRUE(interval.SetLeftEnd("d", false));
}

TEST(StringIntervalTest, EqualityComparesEndsAndFlags) {
  const BINStringInterval interval("b", true, "d", true);
  EXPECT_TRUE(interval == BINStringInterval("b", true, "d", true));
  EXPECT_FALSE(interval == BINStringInterval("a", true, "d", true));
  EXPECT_FALSE(interval == BINStringInterval("b", false, "d", true));
  EXPECT_FALSE(interval == BINStringInterval("b", true, "e", true));
  EXPECT_FALSE(interval == BINStringInterval("b", true, "d", false));
}

TEST(StringIntervalTest, CopyAndMoveCarryEveryField) {
  static_assert(std::is_nothrow_move_constructible_v<BINStringInterval>);
  static_assert(std::is_nothrow_move_assignable_v<BINStringInterval>);
  const BINStringInterval original("left", false, "right", true);
  BINStringInterval copy(original);
  BINStringInterval assigned;
  assigned = copy;
  BINStringInterval moved(std::move(copy));
  BINStringInterval moveAssigned;
  moveAssigned = std::move(assigned);
  EXPECT_TRUE(moved == original);
  EXPECT_TRUE(moveAssigned == original);
}

TEST(StringIntervalTest, DisplayShowsTheFlagsAsBrackets) {
  EXPECT_EQ(DisplayOf(BINStringInterval("b", false, "d", true)),
            Flushing("BINStringInterval: ( b, d ]\n"));
  EXPECT_EQ(DisplayOf(BINStringInterval("b", true, "d", false)),
            Flushing("BINStringInterval: [ b, d )\n"));
}

}  // namespace
