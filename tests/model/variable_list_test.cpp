#include "mcbinning/variable_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;

constexpr auto kAttribute = IBINVariable::AttributeRole;
constexpr auto kTarget = IBINVariable::TargetRole;
constexpr auto kUndefined = IBINVariable::UndefinedRole;
constexpr auto kNumericLevel = IBINVariable::NumericCategoricalLevel;
constexpr int kUntouched = 77;
constexpr auto kTruncate = IBINVariable::TruncateToSmallerInt;

const std::vector<double> kTwo = {1.0, 2.0};
const std::vector<std::string> kColours = {"red", "blue"};

/// Scale attribute 0, numeric target 1, string attribute 2, weight 3.
BINVarList MakeList() {
  BINVarList list;
  list.AddContVar("age", "Age", kAttribute);
  list.AddCatVar("outcome", "Outcome", kTwo, kTarget);
  list.AddCatVar("colour", "Colour", kColours, kAttribute);
  list.AddWeightVar("weight", "Weight", kTruncate);
  return list;
}

/// Where `left` and `right` first differ, kUntouched when they can be merged.
int FirstDifference(const BINVarList& left, const BINVarList& right) {
  int where = kUntouched;
  const bool canMerge = left.CanMergeWith(right, where);
  EXPECT_EQ(canMerge, where == kUntouched);
  return where;
}

TEST(VariableListTest, ManyScaleVariablesAreAddedTogetherOrNotAtAll) {
  BINVarList list = MakeList();
  const std::string before = DisplayOf(list);
  EXPECT_EQ(list.AddContVars({}, kAttribute), -1);
  EXPECT_EQ(list.AddContVars({"x", ""}, kAttribute), -1);
  EXPECT_EQ(list.AddContVars({"x", "y", "x"}, kAttribute), -1);
  EXPECT_EQ(list.AddContVars({"x", "weight"}, kAttribute), -1);
  EXPECT_EQ(list.AddContVars({"x"}, kTarget), -1);
  EXPECT_EQ(DisplayOf(list), before);
  EXPECT_EQ(list.AddContVars({"x", "y"}, kAttribute), 4);
  BINVarList expected = MakeList();
  expected.AddContVar("x", "", kAttribute);
  expected.AddContVar("y", "", kAttribute);
  EXPECT_EQ(DisplayOf(list), DisplayOf(expected));
  EXPECT_EQ(list.GetNumContVar(), 3);
  EXPECT_EQ(FirstDifference(list, expected), kUntouched);
}

TEST(VariableListTest, TheSecondTargetAddedBecomesTheTarget) {
  BINVarList list;
  list.AddCatVar("a", "", kTwo, kTarget);
  list.AddCatVar("b", "", std::vector<double>{1.0, 2.0, 3.0}, kTarget);
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_EQ(list.GetTargetVariable(), list.GetVarAt(1));
  EXPECT_EQ(list.GetVariableRole(0), kTarget);
  EXPECT_EQ(list.GetNTargetCats(), 2);  // of the first variable with the role
  std::vector<std::string> attributes = {"old"};
  std::string target = "old";
  list.GetVarNames(attributes, target);
  EXPECT_TRUE(attributes.empty());
  EXPECT_EQ(target, "b");
}

TEST(VariableListTest, AnOverflowingSumIsCut) {
  BINVarList list;
  list.AddCatVar("a", "", INT_MAX, kNumericLevel, kAttribute);
  list.AddCatVar("b", "", INT_MAX, kNumericLevel, kAttribute);
  EXPECT_EQ(list.UpdateNumbersOfCategories(), INT_MAX);
}

TEST(VariableListTest, SettingASecondTargetRoleKeepsTheTargetIndex) {
  BINVarList list = MakeList();
  EXPECT_TRUE(list.SetVariableRole(2, kTarget));
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_EQ(list.GetVariableRole(2), kTarget);
  EXPECT_TRUE(list.SetVariableRole(2, kAttribute));  // it had the target role
  EXPECT_EQ(list.GetTargetIndex(), -1);
  EXPECT_EQ(list.GetVariableRole(1), kTarget);
  EXPECT_TRUE(list.SetVariableRole(1, kTarget));
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_TRUE(list.SetVariableRole(0, kUndefined));  // not the target
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_TRUE(list.SetVariableRole(1, kUndefined));
  EXPECT_EQ(list.GetTargetIndex(), -1);
  EXPECT_EQ(list.GetTargetVariable(), nullptr);
}

TEST(VariableListTest, AWeightVariableKeepsItsRoleButMovesTheTargetIndex) {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  list.AddWeightVar("w", "", kTruncate);
  EXPECT_TRUE(list.SetVariableRole(1, kTarget));
  EXPECT_EQ(list.GetVariableRole(1), IBINVariable::FrequencyWeightRole);
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_TRUE(list.SetVariableRole(1, kAttribute));
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_TRUE(list.RemoveVar(1));  // its role is not the target role: the index stays
  EXPECT_EQ(list.GetTargetIndex(), 1);
  EXPECT_EQ(list.GetTargetVariable(), nullptr);
}

TEST(VariableListTest, RemovalCountsByLevel) {
  BINVarList list;
  list.AddCatVar("a", "", 2, IBINVariable::ContinuousLevel, kAttribute);
  EXPECT_EQ(list.GetNumCatVar(), 1);
  EXPECT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(list.GetNumCatVar(), 1);
  EXPECT_EQ(list.GetNumContVar(), -1);
}

TEST(VariableListTest, DisplayOfAnEmptyList) {
  EXPECT_EQ(DisplayOf(BINVarList()), "\x08INegin display of BINVarList object.\n" +
                                         Flushing("Total variables: 0\n"
                                                  "Number of Continuous Variables = 0\n"
                                                  "Number of Categorical Variables  = 0\n") +
                                         "End of display for BINVarList object.\n");
}

TEST(VariableListTest, DisplayOfEveryKindOfVariable) {
  EXPECT_EQ(DisplayOf(MakeList()),
            "\x08INegin display of BINVarList object.\n" +
                Flushing("Total variables: 4\n"
                         "Number of Continuous Variables = 1\n"
                         "Number of Categorical Variables  = 2\n"
                         "Target Index  = 1\n"
                         "Variable 0\n"
                         "Continuous variable: name = age, label = Age, role = Attribute\n"
                         "Variable 1\n"
                         "Categorical variable: name = outcome, label = Outcome, role = Target\n"
                         "\tMeasurement Level = Numeric Categorical\n"
                         "\tNumber of Categories = 2\n"
                         "\tBINCatNumEncoder: Last code = 1\n"
                         "\t\tNumeric values of categories: 1 2 \n"
                         "\n"
                         "Variable 2\n"
                         "Categorical variable: name = colour, label = Colour, role = Attribute\n"
                         "\tMeasurement Level = String Categorical\n"
                         "\tNumber of Categories = 2\n"
                         "\tBINStringEncoder object:  Last code = 1\n"
                         "\t\t0\t\tred\n"
                         "\t\t1\t\tblue\n"
                         "Variable 3\n"
                         "Frequency weight variable: name = weight, label = Weight\n"
                         "\tBINRoundEncoder: option = Truncate to smaller int\n"
                         "\n") +
                "End of display for BINVarList object.\n");
}

TEST(VariableListTest, DisplayNamesATargetThatComesFirst) {
  BINVarList list;
  list.AddCatVar("outcome", "", 2, kNumericLevel, kTarget);
  EXPECT_NE(DisplayOf(list).find("Target Index  = 0\n"), std::string::npos);
}

TEST(VariableListMergeTest, DifferentTargetIndexesGiveTheSmaller) {
  BINVarList other = MakeList();
  other.SetVariableRole(1, kUndefined);
  EXPECT_EQ(FirstDifference(MakeList(), other), -1);
  EXPECT_EQ(FirstDifference(other, MakeList()), -1);
  other.SetVariableRole(0, kTarget);
  EXPECT_EQ(FirstDifference(MakeList(), other), 0);
}

TEST(VariableListMergeTest, WeightAndUndefinedVariablesAreNotComparedFurther) {
  BINVarList weight = MakeList();
  weight.AddDiscreteUserMissing(3, 9.0, "");
  EXPECT_EQ(FirstDifference(weight, MakeList()), kUntouched);
  BINVarList undefined;
  undefined.AddCatVar("a", "", 5, kNumericLevel, kUndefined);
  BINVarList other;
  other.AddCatVar("a", "", 0, kNumericLevel, kUndefined);
  other.AddDiscreteUserMissing(0, 1.0, "");
  EXPECT_EQ(FirstDifference(undefined, other), kUntouched);
}

TEST(VariableListMergeTest, ADuplicateValueKeepsEvenACopyFromMerging) {
  BINVarList list = MakeList();
  const std::vector<double> values = {1.0, 2.0, 2.0};
  list.AddCatVar("a", "", values, kAttribute);
  EXPECT_EQ(list.GetVarAt(4)->GetNumberOfCategories(), 3);
  EXPECT_EQ(list.GetEncoderAt(4)->GetNumberOfCategories(), 2);
  EXPECT_EQ(FirstDifference(list, BINVarList(list)), 4);
  BINVarList asTarget;
  asTarget.AddCatVar("a", "", values, kTarget);
  EXPECT_EQ(FirstDifference(asTarget, BINVarList(asTarget)), 0);
}

TEST(VariableListMergeTest, ACategoricalVariableOfContinuousLevelNeedsNoCodes) {
  for (const auto level : {IBINVariable::ContinuousLevel, IBINVariable::UnknownLevel}) {
    BINVarList list;
    list.AddCatVar("a", "", 5, level, kAttribute);
    EXPECT_EQ(FirstDifference(list, list), level == IBINVariable::ContinuousLevel ? kUntouched : 0);
  }
}

TEST(VariableListMergeTest, CategoriesAreComparedWithTheOwnEncoderOnly) {
  BINVarList two;
  two.AddCatVar("a", "", kTwo, kAttribute);
  BINVarList three;
  three.AddCatVar("a", "", std::vector<double>{4.0, 5.0, 6.0}, kAttribute);
  EXPECT_EQ(FirstDifference(two, three), kUntouched);
  static_cast<BINCatNumEncoder&>(*three.GetEncoderAt(0)).Encode(7.0);
  EXPECT_EQ(FirstDifference(two, three), 0);
  EXPECT_EQ(FirstDifference(three, two), 0);
  three.UpdateNumbersOfCategories();
  EXPECT_EQ(FirstDifference(two, three), kUntouched);
}

TEST(VariableListTest, ARefusedNewDefinitionIsFreedAndAnsweredTrue) {
  BINVarList list;  // leaks would be reported by the sanitizer
  list.AddCatVar("a", "", 2, IBINVariable::UnknownLevel, kAttribute);
  EXPECT_TRUE(list.AddDiscreteUserMissing(0, 9.0, "nine"));
  EXPECT_TRUE(list.SetMissingInterval(0, 1.0, 2.0));
  EXPECT_EQ(list.GetVarAt(0)->GetUserMissingInfo(), nullptr);
}

}  // namespace
