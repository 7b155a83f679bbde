#include "mcbinning/user_missing.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::ForeignUserMissing;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(UserMissingTest, AHostsOwnDefinitionIsAssigned) {
  ForeignUserMissing definition(IBINUserMissing::NumericData);
  definition = ForeignUserMissing(IBINUserMissing::StringData);
  EXPECT_EQ(definition.GetDataType(), IBINUserMissing::StringData);
}

TEST(NumericUserMissingTest, ContainsValuesAndIntervalNothingBetween) {
  BINNumericUserMissing definition;
  definition.AddValue(1.0, "one");
  definition.AddValue(9.0, "nine");
  definition.SetInterval(BINNumericInterval(100.0, 200.0));
  EXPECT_TRUE(definition.Contains(9.0));
  EXPECT_TRUE(definition.Contains(150.0));
  EXPECT_TRUE(definition.Contains(100.0));
  EXPECT_TRUE(definition.Contains(200.0));
  EXPECT_FALSE(definition.Contains(50.0));
}

TEST(NumericUserMissingTest, NaNIsNotContainedEvenWhenListed) {
  BINNumericUserMissing definition;
  definition.AddValue(kNaN, "");
  EXPECT_FALSE(definition.Contains(kNaN));
  definition.AddValue(0.0, "");
  EXPECT_TRUE(definition.Contains(-0.0));
}

TEST(NumericUserMissingTest, ALaterIntervalReplacesTheEarlier) {
  BINNumericUserMissing definition;
  definition.SetInterval(BINNumericInterval(1.0, 2.0));
  definition.SetInterval(BINNumericInterval(3.0, 4.0));
  ASSERT_NE(definition.GetInterval(), nullptr);
  EXPECT_TRUE(*definition.GetInterval() == BINNumericInterval(3.0, 4.0));
  EXPECT_TRUE(definition.HasInterval());
}

TEST(NumericUserMissingTest, EqualityIgnoresLabelsAndHeedsOrder) {
  BINNumericUserMissing left;
  left.AddValue(1.0, "a");
  left.AddValue(2.0, "b");
  BINNumericUserMissing right;
  right.AddValue(1.0, "x");
  right.AddValue(2.0, "y");
  EXPECT_TRUE(left.IsEqualTo(&right));
  BINNumericUserMissing reversed;
  reversed.AddValue(2.0, "b");
  reversed.AddValue(1.0, "a");
  EXPECT_FALSE(left.IsEqualTo(&reversed));
  BINNumericUserMissing shorter;
  shorter.AddValue(1.0, "a");
  EXPECT_FALSE(left.IsEqualTo(&shorter));
}

TEST(NumericUserMissingTest, EqualityComparesTheIntervals) {
  BINNumericUserMissing with;
  with.SetInterval(BINNumericInterval(0.0, 0.0));
  BINNumericUserMissing without;
  EXPECT_FALSE(with.IsEqualTo(&without));
  EXPECT_FALSE(without.IsEqualTo(&with));
  BINNumericUserMissing same;
  same.SetInterval(BINNumericInterval(-0.0, 0.0));
  EXPECT_TRUE(with.IsEqualTo(&same));
  BINNumericUserMissing other;
  other.SetInterval(BINNumericInterval(0.0, 1.0));
  EXPECT_FALSE(with.IsEqualTo(&other));
}

TEST(NumericUserMissingTest, NothingEqualsNullAnotherTypeOrNaN) {
  BINNumericUserMissing definition;
  BINStringUserMissing string;
  EXPECT_FALSE(definition.IsEqualTo(nullptr));
  EXPECT_FALSE(definition.IsEqualTo(&string));
  const ForeignUserMissing foreign(IBINUserMissing::NumericData);
  EXPECT_FALSE(definition.IsEqualTo(&foreign));
  EXPECT_TRUE(definition.IsEqualTo(&definition));
  definition.AddValue(kNaN, "");
  EXPECT_FALSE(definition.IsEqualTo(&definition));
}

TEST(NumericUserMissingTest, DisplayWithNothing) {
  EXPECT_EQ(DisplayOf(BINNumericUserMissing()), Flushing("\n"
                                                         "Start of BINNumericUserMissing display\n"
                                                         "End of BINNumericUserMissing display\n"));
}

TEST(NumericUserMissingTest, DisplayWithValuesAndInterval) {
  BINNumericUserMissing definition;
  definition.AddValue(1.5, "one and a half");
  definition.AddValue(-9.0, "");
  definition.SetInterval(BINNumericInterval(100.0, 200.0));
  EXPECT_EQ(DisplayOf(definition), Flushing("\n"
                                            "Start of BINNumericUserMissing display\n"
                                            "Discrete missing values:\n"
                                            "\t0\t1.5, label = one and a half\n"
                                            "\t1\t-9, label = \n"
                                            "Missing interval:\n"
                                            "BINNumericInterval: [ 100, 200 ]\n"
                                            "End of BINNumericUserMissing display\n"));
}

TEST(StringUserMissingTest, WhatItHoldsCanBeAddedToIt) {
  const std::string value(100, 'v');
  const std::string label(100, 'l');
  BINStringUserMissing definition;
  definition.AddValue(value, label);
  for (int i = 0; i < 8; ++i) {
    definition.AddValue(definition.GetValueLabels()[0], definition.GetDiscreteValues()[0]);
    EXPECT_EQ(definition.GetDiscreteValues().back(), label);
    EXPECT_EQ(definition.GetValueLabels().back(), value);
  }
}

TEST(StringUserMissingTest, ContainsComparesEveryByte) {
  BINStringUserMissing definition;
  definition.AddValue(std::string("a\0b", 3), "");
  EXPECT_TRUE(definition.Contains(std::string("a\0b", 3)));
  EXPECT_FALSE(definition.Contains("a"));
  EXPECT_FALSE(definition.Contains(std::string("a\0b ", 4)));
  EXPECT_FALSE(definition.Contains(std::string("A\0b", 3)));
  EXPECT_FALSE(definition.Contains(""));
}

TEST(StringUserMissingTest, EqualityIgnoresLabelsAndHeedsOrder) {
  BINStringUserMissing left;
  left.AddValue("a", "1");
  left.AddValue("b", "2");
  BINStringUserMissing same;
  same.AddValue("a", "");
  same.AddValue("b", "");
  BINStringUserMissing reversed;
  reversed.AddValue("b", "2");
  reversed.AddValue("a", "1");
  BINStringUserMissing shorter;
  shorter.AddValue("a", "1");
  EXPECT_TRUE(left.IsEqualTo(&same));
  EXPECT_FALSE(left.IsEqualTo(&reversed));
  EXPECT_FALSE(left.IsEqualTo(&shorter));
  EXPECT_FALSE(left.IsEqualTo(nullptr));
  const BINNumericUserMissing numeric;
  EXPECT_FALSE(BINStringUserMissing().IsEqualTo(&numeric));
  const ForeignUserMissing foreign(IBINUserMissing::StringData);
  EXPECT_FALSE(BINStringUserMissing().IsEqualTo(&foreign));
}

TEST(StringUserMissingTest, DisplayIsFramed) {
  BINStringUserMissing definition;
  EXPECT_EQ(DisplayOf(definition), Flushing("\n"
                                            "Start of BINStringUserMissing display\n"
                                            "End of BINStringUserMissing display\n"));
  definition.AddValue("x", "ex");
  definition.AddValue("", "none");
  EXPECT_EQ(DisplayOf(definition), Flushing("\n"
                                            "Start of BINStringUserMissing display\n"
                                            "Discrete missing values:\n"
                                            "\t0\tx, label = ex\n"
                                            "\t1\t, label = none\n"
                                            "End of BINStringUserMissing display\n"));
}

}  // namespace
