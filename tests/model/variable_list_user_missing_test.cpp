#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "mcbinning/user_missing.h"
#include "mcbinning/variable_list.h"
#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::CountingStringUserMissing;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::ForeignUserMissing;
using mcbinning_tests::UserMissingCount;

constexpr auto kAttribute = IBINVariable::AttributeRole;

const std::vector<double> kTwo = {1.0, 2.0};
const std::vector<std::string> kColours = {"red", "blue"};

/// Scale attribute 0, numeric target 1, string attribute 2, weight 3.
BINVarList MakeList() {
  BINVarList list;
  list.AddContVar("age", "Age", kAttribute);
  list.AddCatVar("outcome", "Outcome", kTwo, IBINVariable::TargetRole);
  list.AddCatVar("colour", "Colour", kColours, kAttribute);
  list.AddWeightVar("weight", "Weight", IBINVariable::TruncateToSmallerInt);
  return list;
}

TEST(VariableListUserMissingTest, DiscreteUserMissingFollowsTheKindOfVariable) {
  BINVarList list = MakeList();
  EXPECT_FALSE(list.AddDiscreteUserMissing(0, std::string("x"), "ex"));
  EXPECT_FALSE(list.AddDiscreteUserMissing(1, std::string("x"), "ex"));
  EXPECT_FALSE(list.AddDiscreteUserMissing(3, std::string("x"), "ex"));
  EXPECT_FALSE(list.AddDiscreteUserMissing(2, 9.0, "nine"));
  EXPECT_EQ(DisplayOf(list), DisplayOf(MakeList()));
  for (const int index : {0, 1, 3}) {
    EXPECT_TRUE(list.AddDiscreteUserMissing(index, 9.0, "nine"));
    EXPECT_TRUE(list.AddDiscreteUserMissing(index, 8.0, "eight"));
    const auto* definition =
        static_cast<BINNumericUserMissing*>(list.GetVarAt(index)->GetUserMissingInfo());
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->GetDiscreteValues(), (std::vector<double>{9.0, 8.0}));
    EXPECT_EQ(definition->GetValueLabels(), (std::vector<std::string>{"nine", "eight"}));
  }
  EXPECT_TRUE(list.AddDiscreteUserMissing(2, std::string("x"), "ex"));
  EXPECT_TRUE(list.AddDiscreteUserMissing(2, std::string("y"), "why"));
  EXPECT_EQ(list.GetVarAt(2)->GetUserMissingInfo()->GetNDiscreteValues(), 2);
}

TEST(VariableListUserMissingTest, ARefusedNewDefinitionIsFreedAndAnsweredTrue) {
  BINVarList list;  // leaks would be reported by the sanitizer
  list.AddCatVar("a", "", 2, IBINVariable::UnknownLevel, kAttribute);
  EXPECT_TRUE(list.AddDiscreteUserMissing(0, 9.0, "nine"));
  EXPECT_TRUE(list.SetMissingInterval(0, 1.0, 2.0));
  EXPECT_EQ(list.GetVarAt(0)->GetUserMissingInfo(), nullptr);
}

TEST(VariableListUserMissingTest, ADefinitionOfTheOtherTypeIsNotTouched) {
  UserMissingCount count;
  BINVarList list;
  list.AddCatVar("a", "", 2, IBINVariable::UnknownLevel, kAttribute);
  ASSERT_TRUE(list.GetVarAt(0)->SetUserMissingInfo(new CountingStringUserMissing(count)));
  EXPECT_FALSE(list.AddDiscreteUserMissing(0, 9.0, "nine"));
  EXPECT_FALSE(list.SetMissingInterval(0, 1.0, 2.0));
  EXPECT_EQ(list.GetVarAt(0)->GetUserMissingInfo()->GetNDiscreteValues(), 0);
  EXPECT_EQ(count.destroyed, 0);
}

TEST(VariableListUserMissingTest, AHostsOwnDefinitionIsNotTouched) {
  BINVarList list = MakeList();
  auto* foreign = new ForeignUserMissing(IBINUserMissing::NumericData);
  ASSERT_TRUE(list.GetVarAt(0)->SetUserMissingInfo(foreign));
  EXPECT_FALSE(list.AddDiscreteUserMissing(0, 9.0, "nine"));
  EXPECT_FALSE(list.SetMissingInterval(0, 1.0, 2.0));
  EXPECT_EQ(list.GetVarAt(0)->GetUserMissingInfo(), foreign);
}

TEST(VariableListUserMissingTest, ASecondMissingIntervalIsRefused) {
  BINVarList list = MakeList();
  EXPECT_TRUE(list.SetMissingInterval(0, 1.0, 2.0));
  EXPECT_FALSE(list.SetMissingInterval(0, 3.0, 4.0));
  const auto* definition =
      static_cast<BINNumericUserMissing*>(list.GetVarAt(0)->GetUserMissingInfo());
  EXPECT_TRUE(*definition->GetInterval() == BINNumericInterval(1.0, 2.0));
  EXPECT_FALSE(list.SetMissingInterval(2, 1.0, 2.0));
}

TEST(VariableListUserMissingTest, AnIntervalJoinsDiscreteValues) {
  BINVarList list = MakeList();
  EXPECT_TRUE(list.AddDiscreteUserMissing(3, 9.0, ""));
  EXPECT_TRUE(list.SetMissingInterval(3, 1.0, std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(list.GetVarAt(3)->GetUserMissingInfo()->GetNDiscreteValues(), 1);
  EXPECT_TRUE(list.GetVarAt(3)->GetUserMissingInfo()->HasInterval());
}

}  // namespace
