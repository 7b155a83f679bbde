#include "mcbinning/variable_list.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <climits>
#include <memory>
#include <type_traits>
#include <vector>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "support/counting_user_missing.h"
#include "support/display.h"
#include "support/virtual_slots.h"

namespace {

using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::UserMissingCount;

constexpr auto kAttribute = IBINVariable::AttributeRole;
constexpr auto kTarget = IBINVariable::TargetRole;
constexpr auto kUndefined = IBINVariable::UndefinedRole;
constexpr auto kNumericLevel = IBINVariable::NumericCategoricalLevel;
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

TEST(VariableListTest, FreshListIsEmpty) {
  BINVarList list;
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(list.GetNumCatVar(), 0);
  EXPECT_EQ(list.GetNumContVar(), 0);
  EXPECT_EQ(list.GetTargetIndex(), -1);
  EXPECT_EQ(list.GetWeightIndex(), -1);
  EXPECT_EQ(list.GetTargetVariable(), nullptr);
  EXPECT_EQ(list.GetNTargetCats(), 0);
  EXPECT_EQ(list.GetNumAttributeVars(), 0);
  EXPECT_EQ(list.FindVariable(""), -1);
  EXPECT_EQ(list.UpdateNumbersOfCategories(), 0);
  static_assert(std::is_same_v<decltype(list.Size()), std::uint64_t>);
}

class OneMoreSlot : public BINVarList {
 public:
  virtual void First() {}
};

TEST(VariableListTest, OnlyTheDestructorIsVirtual) {
  static_assert(std::has_virtual_destructor_v<BINVarList>);
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&OneMoreSlot::First), 1U);
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&BINVarList::Display), mcbinning_tests::kNotVirtual);
}

TEST(VariableListTest, CatVarWithOneValueOrNoOrATakenNameIsRefused) {
  BINVarList list;
  EXPECT_EQ(list.AddCatVar("a", "", std::vector<double>{}, kAttribute), -1);
  EXPECT_EQ(list.AddCatVar("a", "", std::vector<double>{1.0}, kAttribute), -1);
  EXPECT_EQ(list.AddCatVar("a", "", std::vector<std::string>{"x"}, kAttribute), -1);
  EXPECT_EQ(list.AddCatVar("", "", kTwo, kAttribute), -1);
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(list.AddCatVar("a", "", kTwo, kAttribute), 0);
  EXPECT_EQ(list.AddCatVar("a", "", kTwo, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("a", "", kColours, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("a", "", kTwo, kColours, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("a", "", kColours, kColours, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("a", "", 2, kNumericLevel, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("", "", 2, kNumericLevel, kTarget), -1);
  EXPECT_EQ(list.AddCatVar("A", "", kTwo, kAttribute), 1);
  EXPECT_EQ(list.Size(), 2U);
  EXPECT_EQ(list.GetNumCatVar(), 2);
  EXPECT_EQ(list.GetTargetIndex(), -1);
}

TEST(VariableListTest, CodesFollowTheGivenOrderAndDuplicatesCountAsCategories) {
  BINVarList list;
  ASSERT_EQ(list.AddCatVar("n", "", std::vector<double>{2.0, 1.0, 2.0}, kAttribute), 0);
  EXPECT_EQ(list.GetVarAt(0)->GetMeasureLevel(), kNumericLevel);
  EXPECT_EQ(list.GetVarAt(0)->GetNumberOfCategories(), 3);
  const auto& encoder = static_cast<const BINCatNumEncoder&>(*list.GetEncoderAt(0));
  EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
  EXPECT_EQ(encoder.Decode(0), 2.0);
  EXPECT_EQ(encoder.Decode(1), 1.0);
  ASSERT_EQ(list.AddCatVar("s", "", kColours, kAttribute), 1);
  EXPECT_EQ(list.GetVarAt(1)->GetMeasureLevel(), IBINVariable::StringCategoricalLevel);
  EXPECT_EQ(static_cast<BINStringEncoder&>(*list.GetEncoderAt(1)).Decode(1), "blue");
}

TEST(VariableListTest, ASystemMissingValueAmongTheKnownOnesGetsNoCode) {
  BINVarList list;
  ASSERT_EQ(list.AddCatVar("n", "", {MCMV::gMissingValue, 1.0}, kAttribute), 0);
  EXPECT_EQ(list.GetVarAt(0)->GetNumberOfCategories(), 2);
  EXPECT_EQ(list.GetEncoderAt(0)->GetNumberOfCategories(), 1);
}

TEST(VariableListTest, ValueLabelsAreHandedToTheEncoder) {
  BINVarList list;
  const std::vector<std::string> labels = {"one", "two", "three"};
  ASSERT_EQ(list.AddCatVar("n", "", kTwo, labels, kAttribute), 0);
  ASSERT_EQ(list.AddCatVar("s", "", kColours, labels, kTarget), 1);
  EXPECT_EQ(*list.GetEncoderAt(0)->GetValueLabels(), labels);
  EXPECT_EQ(*list.GetEncoderAt(1)->GetValueLabels(), labels);
  EXPECT_EQ(list.GetTargetIndex(), 1);
}

TEST(VariableListTest, CatVarWithoutValuesTakesAnyCountAndLevel) {
  BINVarList list;
  EXPECT_EQ(list.AddCatVar("a", "", INT_MIN, IBINVariable::ContinuousLevel, kAttribute), 0);
  EXPECT_EQ(list.AddCatVar("b", "", INT_MAX, static_cast<IBINVariable::MeasureLevel>(77),
                           static_cast<IBINVariable::VariableRole>(-4)),
            1);
  EXPECT_EQ(list.GetVarAt(1)->GetNumberOfCategories(), INT_MAX);
  EXPECT_EQ(list.GetVariableRole(1), static_cast<IBINVariable::VariableRole>(-4));
  EXPECT_EQ(list.GetNumCatVar(), 2);
}

TEST(VariableListTest, AScaleVariableIsNeverAddedAsTarget) {
  BINVarList list;
  EXPECT_EQ(list.AddContVar("x", "", kTarget), -1);
  EXPECT_EQ(list.AddContVar("", "", kAttribute), -1);
  EXPECT_EQ(list.AddContVar("x", "", kAttribute), 0);
  EXPECT_EQ(list.AddContVar("x", "", kAttribute), -1);
  EXPECT_EQ(list.Size(), 1U);
  EXPECT_EQ(list.GetNumContVar(), 1);
  EXPECT_EQ(list.GetNumCatVar(), 0);
}

TEST(VariableListTest, OnlyOneWeightVariableWhateverItsName) {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  EXPECT_EQ(list.AddWeightVar("x", "", kTruncate), 1);
  EXPECT_EQ(list.AddWeightVar("other", "", kTruncate), -1);
  EXPECT_EQ(list.Size(), 2U);
  EXPECT_EQ(list.GetWeightIndex(), 1);
  EXPECT_EQ(list.GetNumContVar(), 1);
  EXPECT_EQ(list.GetNumCatVar(), 0);
  EXPECT_EQ(list.FindVariable("x"), 0);
  BINVarList unnamed;
  EXPECT_EQ(unnamed.AddWeightVar("", "", kTruncate), 0);
  EXPECT_EQ(unnamed.FindVariable(""), 0);
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

TEST(VariableListTest, LookupsAnswerForBadIndexes) {
  BINVarList list = MakeList();
  const BINVarList& readOnly = list;
  for (const int index : {INT_MIN, -1, 4, INT_MAX}) {
    EXPECT_EQ(list.GetVarAt(index), nullptr);
    EXPECT_EQ(readOnly.GetVarAt(index), nullptr);
    EXPECT_EQ(list.GetEncoderAt(index), nullptr);
    EXPECT_EQ(readOnly.GetEncoderAt(index), nullptr);
    EXPECT_EQ(list.GetVariableRole(index), kUndefined);
    EXPECT_FALSE(list.SetVariableRole(index, kTarget));
    EXPECT_FALSE(list.RemoveVar(index));
    EXPECT_FALSE(list.AddDiscreteUserMissing(index, 1.0, ""));
    EXPECT_FALSE(list.AddDiscreteUserMissing(index, std::string("x"), ""));
    EXPECT_FALSE(list.SetMissingInterval(index, 1.0, 2.0));
  }
  EXPECT_EQ(DisplayOf(list), DisplayOf(MakeList()));
}

TEST(VariableListTest, LookupsFindVariablesAndEncoders) {
  BINVarList list = MakeList();
  const BINVarList& readOnly = list;
  EXPECT_EQ(list.FindVariable("colour"), 2);
  EXPECT_EQ(list.FindVariable("Colour"), -1);
  EXPECT_EQ(list.FindVariable("colour "), -1);
  EXPECT_EQ(readOnly.GetVarAt(2), list.GetVarAt(2));
  EXPECT_EQ(list.GetEncoderAt(0), nullptr);
  EXPECT_EQ(readOnly.GetEncoderAt(0), nullptr);
  EXPECT_EQ(readOnly.GetEncoderAt(3), list.GetVarAt(3)->GetEncoder());
  EXPECT_EQ(list.GetVariableRole(3), IBINVariable::FrequencyWeightRole);
  EXPECT_EQ(list.GetNumAttributeVars(), 2);
  EXPECT_EQ(list.GetNTargetCats(), 2);
  EXPECT_EQ(list.GetWeightIndex(), 3);
  std::vector<std::string> attributes;
  std::string target;
  list.GetVarNames(attributes, target);
  EXPECT_EQ(attributes, (std::vector<std::string>{"age", "colour"}));
  EXPECT_EQ(target, "outcome");
}

TEST(VariableListTest, GetVarNamesLeavesTheTargetNameWithoutATarget) {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  std::vector<std::string> attributes;
  std::string target = "untouched";
  list.GetVarNames(attributes, target);
  EXPECT_EQ(target, "untouched");
}

TEST(VariableListTest, UpdateSumsTheNumbersOfCategories) {
  BINVarList list = MakeList();
  static_cast<BINStringEncoder&>(*list.GetEncoderAt(2)).Encode("green");
  EXPECT_EQ(list.UpdateNumbersOfCategories(), 5);
  EXPECT_EQ(list.GetVarAt(2)->GetNumberOfCategories(), 3);
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

TEST(VariableListTest, AScaleVariableCanGetTheTargetRoleLater) {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  EXPECT_TRUE(list.SetVariableRole(0, kTarget));
  EXPECT_EQ(list.GetTargetIndex(), 0);
  EXPECT_EQ(list.GetNTargetCats(), 0);
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

TEST(VariableListTest, RemovingMovesTheIndexesBehind) {
  BINVarList list = MakeList();
  EXPECT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(list.GetTargetIndex(), 0);
  EXPECT_EQ(list.GetWeightIndex(), 2);
  EXPECT_EQ(list.GetNumContVar(), 0);
  EXPECT_EQ(list.GetNumCatVar(), 2);
  EXPECT_EQ(list.FindVariable("colour"), 1);
  EXPECT_TRUE(list.RemoveVar("colour"));
  EXPECT_EQ(list.GetTargetIndex(), 0);
  EXPECT_EQ(list.GetWeightIndex(), 1);
  EXPECT_EQ(list.GetNumCatVar(), 1);
  EXPECT_TRUE(list.RemoveVar("outcome"));
  EXPECT_EQ(list.GetTargetIndex(), -1);
  EXPECT_EQ(list.GetNumCatVar(), 0);
  EXPECT_EQ(list.GetWeightIndex(), 0);
  EXPECT_FALSE(list.RemoveVar("outcome"));
  EXPECT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(list.GetWeightIndex(), -1);
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(list.AddWeightVar("again", "", kTruncate), 0);
}

TEST(VariableListTest, RemovingAnotherVariableWithTheTargetRoleForgetsTheTarget) {
  BINVarList list = MakeList();
  list.SetVariableRole(2, kTarget);
  EXPECT_TRUE(list.RemoveVar(2));
  EXPECT_EQ(list.GetTargetIndex(), -1);
}

TEST(VariableListTest, RemovalCountsByLevel) {
  BINVarList list;
  list.AddCatVar("a", "", 2, IBINVariable::ContinuousLevel, kAttribute);
  EXPECT_EQ(list.GetNumCatVar(), 1);
  EXPECT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(list.GetNumCatVar(), 1);
  EXPECT_EQ(list.GetNumContVar(), -1);
}

TEST(VariableListTest, RemovingFreesTheVariablesDefinition) {
  UserMissingCount count;
  BINVarList list = MakeList();
  list.GetVarAt(0)->SetUserMissingInfo(new CountingNumericUserMissing(count));
  EXPECT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(count.destroyed, 1);
}

TEST(VariableListTest, ValidityNeedsAnAttribute) {
  BINVarList list;
  std::vector<int> single = {7};
  std::vector<int> none = {7};
  EXPECT_FALSE(list.IsValidList(single, none));
  EXPECT_TRUE(single.empty() && none.empty());
  list.AddCatVar("t", "", kTwo, kTarget);
  list.AddWeightVar("w", "", kTruncate);
  single = none = {7};
  EXPECT_FALSE(list.IsValidList(single, none));
  EXPECT_TRUE(single.empty() && none.empty());
  list.AddContVar("x", "", kAttribute);
  EXPECT_TRUE(list.IsValidList(single, none));
  EXPECT_TRUE(single.empty() && none.empty());
}

TEST(VariableListTest, ValidityNamesEveryVariableWithTooFewCategories) {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  list.AddCatVar("single", "", 1, kNumericLevel, kAttribute);
  static_cast<BINCatNumEncoder&>(*list.GetEncoderAt(1)).Encode(4.0);
  list.AddCatVar("empty", "", 0, kNumericLevel, kTarget);
  list.AddCatVar("negative", "", -2, kNumericLevel, kUndefined);
  list.AddCatVar("single too", "", 1, kNumericLevel, kUndefined);
  list.AddCatVar("raised", "", 1, kNumericLevel, kUndefined);
  auto& encoder = static_cast<BINCatNumEncoder&>(*list.GetEncoderAt(5));
  encoder.Encode(1.0);
  encoder.Encode(2.0);
  std::vector<int> single;
  std::vector<int> none;
  const BINVarList& readOnly = list;
  EXPECT_FALSE(readOnly.IsValidList(single, none));
  EXPECT_EQ(single, (std::vector<int>{1, 4}));
  EXPECT_EQ(none, (std::vector<int>{2, 3}));
  EXPECT_EQ(list.GetVarAt(5)->GetNumberOfCategories(), 2);
}

TEST(VariableListTest, CopiesAreDeepAndComplete) {
  UserMissingCount count;
  {
    BINVarList list = MakeList();
    list.GetVarAt(0)->SetUserMissingInfo(new CountingNumericUserMissing(count));
    const BINVarList copy(list);
    BINVarList assigned;
    assigned.AddContVar("old", "", kAttribute);
    assigned = list;
    const BINVarList& self = assigned;
    assigned = self;
    EXPECT_EQ(count.alive, 3);
    EXPECT_TRUE(list.RemoveVar(1));
    for (const BINVarList* other : {&copy, static_cast<const BINVarList*>(&assigned)}) {
      EXPECT_EQ(other->Size(), 4U);
      EXPECT_EQ(other->GetTargetIndex(), 1);
      EXPECT_EQ(other->GetWeightIndex(), 3);
      EXPECT_EQ(other->GetNumCatVar(), 2);
      EXPECT_EQ(other->GetNumContVar(), 1);
      EXPECT_EQ(DisplayOf(*other), DisplayOf(copy));
    }
  }
  EXPECT_EQ(count.alive, 0);
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

}  // namespace
