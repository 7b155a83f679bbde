#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "mcbinning/variable_list.h"

namespace {

constexpr auto kAttribute = IBINVariable::AttributeRole;
constexpr auto kTarget = IBINVariable::TargetRole;
constexpr auto kUndefined = IBINVariable::UndefinedRole;
constexpr auto kNumericLevel = IBINVariable::NumericCategoricalLevel;
constexpr int kUntouched = 77;

const std::vector<double> kTwo = {1.0, 2.0};

/// Scale attribute 0, numeric target 1, weight 2.
BINVarList MakeList() {
  BINVarList list;
  list.AddContVar("age", "Age", kAttribute);
  list.AddCatVar("outcome", "Outcome", kTwo, kTarget);
  list.AddWeightVar("weight", "Weight", IBINVariable::TruncateToSmallerInt);
  return list;
}

/// Where `left` and `right` first differ, kUntouched when they can be merged.
int FirstDifference(const BINVarList& left, const BINVarList& right) {
  int where = kUntouched;
  const bool canMerge = left.CanMergeWith(right, where);
  EXPECT_EQ(canMerge, where == kUntouched);
  return where;
}

TEST(VariableListMergeTest, CopiesAndEmptyListsMerge) {
  const BINVarList list = MakeList();
  EXPECT_EQ(FirstDifference(list, list), kUntouched);
  EXPECT_EQ(FirstDifference(list, BINVarList(list)), kUntouched);
  EXPECT_EQ(FirstDifference(BINVarList(), BINVarList()), kUntouched);
}

TEST(VariableListMergeTest, ListsOfThreeAndFiveDifferAtThree) {
  BINVarList longer = MakeList();
  longer.AddContVar("x", "", kAttribute);
  longer.AddContVar("y", "", kAttribute);
  EXPECT_EQ(FirstDifference(MakeList(), longer), 3);
  EXPECT_EQ(FirstDifference(longer, MakeList()), 3);
}

TEST(VariableListMergeTest, SizesAreComparedBeforeTargetIndexes) {
  BINVarList shorter;
  shorter.AddContVar("age", "Age", kAttribute);
  EXPECT_EQ(FirstDifference(MakeList(), shorter), 1);
}

TEST(VariableListMergeTest, DifferentTargetIndexesGiveTheSmaller) {
  BINVarList other = MakeList();
  other.SetVariableRole(1, kUndefined);
  EXPECT_EQ(FirstDifference(MakeList(), other), -1);
  EXPECT_EQ(FirstDifference(other, MakeList()), -1);
  other.SetVariableRole(0, kTarget);
  EXPECT_EQ(FirstDifference(MakeList(), other), 0);
}

TEST(VariableListMergeTest, NamesLabelsRolesAndLevelsAreCompared) {
  BINVarList name;
  name.AddContVar("Age", "Age", kAttribute);
  BINVarList label;
  label.AddContVar("age", "age", kAttribute);
  BINVarList role;
  role.AddContVar("age", "Age", kUndefined);
  BINVarList level;
  level.AddCatVar("age", "Age", 0, kNumericLevel, kAttribute);
  BINVarList list;
  list.AddContVar("age", "Age", kAttribute);
  for (const BINVarList* other : {&name, &label, &role, &level}) {
    EXPECT_EQ(FirstDifference(list, *other), 0);
    EXPECT_EQ(FirstDifference(*other, list), 0);
  }
}

TEST(VariableListMergeTest, ALaterDifferenceIsFoundAtItsIndex) {
  BINVarList other = MakeList();
  other.GetVarAt(2)->SetVariableLabel("Other");
  EXPECT_EQ(FirstDifference(MakeList(), other), 2);
}

TEST(VariableListMergeTest, UserMissingDefinitionsAreCompared) {
  BINVarList with = MakeList();
  with.AddDiscreteUserMissing(0, 9.0, "nine");
  EXPECT_EQ(FirstDifference(with, MakeList()), 0);
  EXPECT_EQ(FirstDifference(MakeList(), with), 0);
  BINVarList same = MakeList();
  same.AddDiscreteUserMissing(0, 9.0, "another label");
  EXPECT_EQ(FirstDifference(with, same), kUntouched);
  same.AddDiscreteUserMissing(0, 8.0, "");
  EXPECT_EQ(FirstDifference(with, same), 0);
  BINVarList target = MakeList();
  target.AddDiscreteUserMissing(1, 9.0, "");
  EXPECT_EQ(FirstDifference(target, MakeList()), 1);
}

TEST(VariableListMergeTest, WeightAndUndefinedVariablesAreNotComparedFurther) {
  BINVarList weight = MakeList();
  weight.AddDiscreteUserMissing(2, 9.0, "");
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
  EXPECT_EQ(list.GetVarAt(3)->GetNumberOfCategories(), 3);
  EXPECT_EQ(list.GetEncoderAt(3)->GetNumberOfCategories(), 2);
  EXPECT_EQ(FirstDifference(list, BINVarList(list)), 3);
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

}  // namespace
