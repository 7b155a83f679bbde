#include "mcbinning/variables.h"

#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>
#include <sstream>
#include <type_traits>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "support/counting_user_missing.h"
#include "support/display.h"
#include "support/virtual_slots.h"

namespace {

using mcbinning_tests::CountingNumericUserMissing;
using mcbinning_tests::CountingStringUserMissing;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::UserMissingCount;
using mcbinning_tests::Written;

const char* const kDefinitionDisplay =
    "\n"
    "Start of BINNumericUserMissing display\n"
    "Discrete missing values:\n"
    "\t0\t9, label = nine\n"
    "End of BINNumericUserMissing display\n";

std::unique_ptr<BINNumericUserMissing> MakeNine() {
  auto definition = std::make_unique<BINNumericUserMissing>();
  definition->AddValue(9.0, "nine");
  return definition;
}

BINCatVar NumericVariable(int numberOfCategories) {
  return {"v", "label", numberOfCategories, IBINVariable::NumericCategoricalLevel,
          IBINVariable::AttributeRole};
}

void Meet(BINCatVar& variable, int numberOfValues) {
  auto& encoder = static_cast<BINCatNumEncoder&>(*variable.GetEncoder());
  for (int value = 0; value < numberOfValues; ++value) {
    encoder.Encode(value);
  }
}

std::string LevelText(int level) {
  return Written([level](std::ostream& os) {
    IBINVariable::WriteMeasureLevelText(os, static_cast<IBINVariable::MeasureLevel>(level));
  });
}

std::string RoleText(int role) {
  return Written([role](std::ostream& os) {
    IBINVariable::WriteRoleText(os, static_cast<IBINVariable::VariableRole>(role));
  });
}

std::string OptionText(int option) {
  return Written([option](std::ostream& os) {
    IBINVariable::WriteRoundingOptionText(os,
                                          static_cast<IBINVariable::BINWRoundingOption>(option));
  });
}

TEST(VariableTest, EnumerationValues) {
  static_assert(IBINVariable::UnknownLevel == 0 && IBINVariable::ContinuousLevel == 1 &&
                IBINVariable::NumericCategoricalLevel == 2 &&
                IBINVariable::StringCategoricalLevel == 3 &&
                IBINVariable::FrequencyWeightLevel == 4);
  static_assert(IBINVariable::UndefinedRole == 0 && IBINVariable::AttributeRole == 1 &&
                IBINVariable::TargetRole == 2 && IBINVariable::FrequencyWeightRole == 3);
  static_assert(IBINVariable::VarValid == 0 && IBINVariable::VarSingleCategory == 1 &&
                IBINVariable::VarNoCategories == 2);
  static_assert(IBINVariable::TruncateToSmallerInt == 0 && IBINVariable::RoundToClosestInt == 1);
}

TEST(VariableTest, SlotOrder) {
  using mcbinning_tests::VirtualSlot;
  static_assert(std::has_virtual_destructor_v<IBINVariable>);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetMeasureLevel), 1U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetVariableName), 2U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetVariableLabel), 3U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::SetVariableLabel), 4U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetNumberOfCategories), 5U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetVariableRole), 6U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::SetVariableRole), 7U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::UpdateNumberOfCategories), 8U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::SetUserMissingInfo), 9U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetUserMissingInfo), 10U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::Clone), 11U);
  EXPECT_EQ(VirtualSlot(static_cast<IBINEncoder* (IBINVariable::*)()>(&IBINVariable::GetEncoder)),
            12U);
  EXPECT_EQ(VirtualSlot(static_cast<const IBINEncoder* (IBINVariable::*)() const>(
                &IBINVariable::GetEncoder)),
            13U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::GetVarStatus), 14U);
  EXPECT_EQ(VirtualSlot(&IBINVariable::Display), 15U);
}

TEST(VariableTest, MeasureLevelTexts) {
  EXPECT_EQ(LevelText(0), Flushing("Unknown measure level\n"));
  EXPECT_EQ(LevelText(1), Flushing("Continuous\n"));
  EXPECT_EQ(LevelText(2), Flushing("Numeric Categorical\n"));
  EXPECT_EQ(LevelText(3), Flushing("String Categorical\n"));
  EXPECT_EQ(LevelText(4), Flushing("Frequency weight\n"));
  EXPECT_EQ(LevelText(5), Flushing("Measure level 5\n"));
  EXPECT_EQ(LevelText(-7), Flushing("Measure level -7\n"));
}

TEST(VariableTest, RoleTexts) {
  EXPECT_EQ(RoleText(0), Flushing("Undefined variable role\n"));
  EXPECT_EQ(RoleText(1), Flushing("Attribute\n"));
  EXPECT_EQ(RoleText(2), Flushing("Target\n"));
  EXPECT_EQ(RoleText(3), Flushing("Frequency weight\n"));
  EXPECT_EQ(RoleText(4), Flushing("Variable role 4\n"));
  EXPECT_EQ(RoleText(INT_MIN), Flushing("Variable role -2147483648\n"));
}

TEST(VariableTest, RoundingOptionTexts) {
  EXPECT_EQ(OptionText(0), Flushing("Truncate to smaller int\n"));
  EXPECT_EQ(OptionText(1), Flushing("Round to closest int\n"));
  EXPECT_EQ(OptionText(2), Flushing("\n"));
  EXPECT_EQ(OptionText(-1), Flushing("\n"));
}

TEST(VariableTest, AssignmentThroughTheInterfaceCopiesNothing) {
  BINContVar variable("x", "label", IBINVariable::AttributeRole);
  IBINVariable& interface = variable;
  interface = NumericVariable(3);
  EXPECT_EQ(variable.GetVariableName(), "x");
  EXPECT_EQ(variable.GetMeasureLevel(), IBINVariable::ContinuousLevel);
}

TEST(CatVarTest, KeepsWhatItIsGiven) {
  BINCatVar variable("name", "label", -5, IBINVariable::StringCategoricalLevel,
                     IBINVariable::TargetRole);
  EXPECT_EQ(variable.GetVariableName(), "name");
  EXPECT_EQ(variable.GetVariableLabel(), "label");
  EXPECT_EQ(variable.GetNumberOfCategories(), -5);
  EXPECT_EQ(variable.GetMeasureLevel(), IBINVariable::StringCategoricalLevel);
  EXPECT_EQ(variable.GetVariableRole(), IBINVariable::TargetRole);
  variable.SetVariableLabel("other");
  variable.SetVariableRole(IBINVariable::UndefinedRole);
  variable.SetNumberOfCategories(INT_MAX);
  EXPECT_EQ(variable.GetVariableLabel(), "other");
  EXPECT_EQ(variable.GetVariableRole(), IBINVariable::UndefinedRole);
  EXPECT_EQ(variable.GetNumberOfCategories(), INT_MAX);
}

TEST(CatVarTest, OnlyNumericCategoricalLevelGivesANumericEncoder) {
  for (int level = -1; level <= 6; ++level) {
    const BINCatVar variable("v", "", 2, static_cast<IBINVariable::MeasureLevel>(level),
                             IBINVariable::AttributeRole);
    const bool isNumeric = dynamic_cast<const BINCatNumEncoder*>(variable.GetEncoder()) != nullptr;
    const bool isString = dynamic_cast<const BINStringEncoder*>(variable.GetEncoder()) != nullptr;
    EXPECT_EQ(isNumeric, level == IBINVariable::NumericCategoricalLevel) << level;
    EXPECT_EQ(isString, level != IBINVariable::NumericCategoricalLevel) << level;
    EXPECT_EQ(variable.GetMeasureLevel(), level);
  }
}

TEST(CatVarTest, AnyDeclaredNumberOfCategoriesIsTaken) {
  for (const int count : {INT_MIN, -1, 0, INT_MAX}) {
    EXPECT_EQ(NumericVariable(count).GetNumberOfCategories(), count);
    EXPECT_EQ(
        BINCatVar("v", "", count, IBINVariable::StringCategoricalLevel, IBINVariable::AttributeRole)
            .GetNumberOfCategories(),
        count);
  }
}

TEST(CatVarTest, DeclaredFiveMeetsSevenReportsSeven) {
  BINCatVar variable = NumericVariable(5);
  Meet(variable, 7);
  EXPECT_EQ(variable.GetNumberOfCategories(), 5);
  EXPECT_EQ(variable.UpdateNumberOfCategories(), 7);
  EXPECT_EQ(variable.GetNumberOfCategories(), 7);
  BINCatVar byStatus = NumericVariable(5);
  Meet(byStatus, 7);
  EXPECT_EQ(byStatus.GetVarStatus(), IBINVariable::VarValid);
  EXPECT_EQ(byStatus.GetNumberOfCategories(), 7);
}

TEST(CatVarTest, DeclaredSevenMeetsFiveKeepsSeven) {
  BINCatVar variable = NumericVariable(7);
  Meet(variable, 5);
  EXPECT_EQ(variable.UpdateNumberOfCategories(), 7);
  EXPECT_EQ(variable.GetVarStatus(), IBINVariable::VarValid);
  EXPECT_EQ(variable.GetNumberOfCategories(), 7);
}

TEST(CatVarTest, StatusFollowsTheNumberOfCategories) {
  EXPECT_EQ(NumericVariable(0).GetVarStatus(), IBINVariable::VarNoCategories);
  EXPECT_EQ(NumericVariable(1).GetVarStatus(), IBINVariable::VarSingleCategory);
  EXPECT_EQ(NumericVariable(2).GetVarStatus(), IBINVariable::VarValid);
  BINCatVar negative = NumericVariable(-3);
  EXPECT_EQ(negative.GetVarStatus(), IBINVariable::VarNoCategories);
  EXPECT_EQ(negative.GetNumberOfCategories(), 0);
  BINCatVar met = NumericVariable(-3);
  Meet(met, 1);
  EXPECT_EQ(met.GetVarStatus(), IBINVariable::VarSingleCategory);
}

TEST(CatVarTest, TheEncoderHoldsTheDefinition) {
  UserMissingCount count;
  {
    BINCatVar numeric = NumericVariable(2);
    auto* definition = new CountingNumericUserMissing(count);
    EXPECT_TRUE(numeric.SetUserMissingInfo(definition));
    EXPECT_TRUE(numeric.SetUserMissingInfo(definition));
    EXPECT_EQ(numeric.GetUserMissingInfo(), definition);
    EXPECT_EQ(numeric.GetEncoder()->GetUserMissingInfo(), definition);
    CountingStringUserMissing refused(count);
    EXPECT_FALSE(numeric.SetUserMissingInfo(&refused));
    EXPECT_EQ(numeric.GetUserMissingInfo(), definition);
    EXPECT_EQ(count.destroyed, 0);
  }
  EXPECT_EQ(count.destroyed, 2);  // the accepted one and the local one
  EXPECT_EQ(count.alive, 0);
}

TEST(CatVarTest, AStringEncoderTakesStringDefinitions) {
  BINCatVar variable("v", "", 2, IBINVariable::StringCategoricalLevel, IBINVariable::AttributeRole);
  const auto refused = MakeNine();
  EXPECT_FALSE(variable.SetUserMissingInfo(refused.get()));
  EXPECT_TRUE(variable.SetUserMissingInfo(new BINStringUserMissing()));
  EXPECT_TRUE(variable.SetUserMissingInfo(nullptr));
  EXPECT_EQ(variable.GetUserMissingInfo(), nullptr);
}

TEST(CatVarTest, CopiesAreDeep) {
  UserMissingCount count;
  {
    BINCatVar source("source", "label", 1, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::TargetRole);
    Meet(source, 3);
    source.SetUserMissingInfo(new CountingNumericUserMissing(count));
    BINCatVar target("target", "", 9, IBINVariable::StringCategoricalLevel,
                     IBINVariable::AttributeRole);
    target.SetUserMissingInfo(new CountingStringUserMissing(count));
    target = source;
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_EQ(DisplayOf(target), DisplayOf(source));
    EXPECT_NE(target.GetEncoder(), source.GetEncoder());
    EXPECT_NE(target.GetUserMissingInfo(), source.GetUserMissingInfo());
    const std::unique_ptr<IBINVariable> clone(source.Clone());
    EXPECT_EQ(DisplayOf(*clone), DisplayOf(source));
    const BINCatVar& self = target;
    target = self;
    EXPECT_EQ(DisplayOf(target), DisplayOf(source));
    Meet(source, 5);
    EXPECT_EQ(target.GetEncoder()->GetNumberOfCategories(), 3);
  }
  EXPECT_EQ(count.alive, 0);
}

TEST(CatVarTest, DisplayIsWhole) {
  BINCatVar variable = NumericVariable(5);
  Meet(variable, 2);
  EXPECT_EQ(DisplayOf(variable),
            Flushing("Categorical variable: name = v, label = label, role = Attribute\n"
                     "\tMeasurement Level = Numeric Categorical\n"
                     "\tNumber of Categories = 5\n"
                     "\tBINCatNumEncoder: Last code = 1\n"
                     "\t\tNumeric values of categories: 0 1 \n"
                     "\n"));
}

TEST(ContVarTest, HasNeitherCategoriesNorEncoder) {
  BINContVar variable("v", "label", IBINVariable::AttributeRole);
  IBINVariable& asVariable = variable;
  EXPECT_EQ(asVariable.GetNumberOfCategories(), 0);
  EXPECT_EQ(asVariable.GetEncoder(), nullptr);
  EXPECT_EQ(static_cast<const IBINVariable&>(variable).GetEncoder(), nullptr);
  EXPECT_EQ(variable.UpdateNumberOfCategories(), 0);
  EXPECT_EQ(variable.GetVarStatus(), IBINVariable::VarValid);
  EXPECT_EQ(variable.GetMeasureLevel(), IBINVariable::ContinuousLevel);
  EXPECT_EQ(variable.GetVariableName(), "v");
  EXPECT_EQ(variable.GetVariableLabel(), "label");
  variable.SetVariableLabel("other");
  variable.SetVariableRole(IBINVariable::TargetRole);
  EXPECT_EQ(variable.GetVariableLabel(), "other");
  EXPECT_EQ(variable.GetVariableRole(), IBINVariable::TargetRole);
}

TEST(ContVarTest, AStringDefinitionIsRefusedAndNullRemoves) {
  UserMissingCount count;
  BINContVar variable("v", "", IBINVariable::AttributeRole);
  auto* definition = new CountingNumericUserMissing(count);
  EXPECT_TRUE(variable.SetUserMissingInfo(definition));
  EXPECT_TRUE(variable.SetUserMissingInfo(definition));
  BINStringUserMissing refused;
  EXPECT_FALSE(variable.SetUserMissingInfo(&refused));
  EXPECT_EQ(variable.GetUserMissingInfo(), definition);
  EXPECT_EQ(count.destroyed, 0);
  EXPECT_TRUE(variable.SetUserMissingInfo(nullptr));
  EXPECT_EQ(variable.GetUserMissingInfo(), nullptr);
  EXPECT_EQ(count.destroyed, 1);
}

TEST(ContVarTest, CopiesAreDeep) {
  UserMissingCount count;
  {
    BINContVar source("source", "label", IBINVariable::TargetRole);
    BINContVar target("target", "", IBINVariable::AttributeRole);
    target.SetUserMissingInfo(new CountingNumericUserMissing(count));
    target = source;
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_EQ(target.GetUserMissingInfo(), nullptr);
    EXPECT_EQ(DisplayOf(target), DisplayOf(source));
    source.SetUserMissingInfo(new CountingNumericUserMissing(count));
    target = source;
    const BINContVar& self = target;
    target = self;
    const std::unique_ptr<IBINVariable> clone(source.Clone());
    EXPECT_EQ(count.alive, 3);
    EXPECT_NE(target.GetUserMissingInfo(), source.GetUserMissingInfo());
    EXPECT_NE(clone->GetUserMissingInfo(), source.GetUserMissingInfo());
    EXPECT_EQ(clone->GetVariableName(), "source");
  }
  EXPECT_EQ(count.alive, 0);
}

TEST(ContVarTest, DisplayLeavesThePrecisionAndHidesTheDefinition) {
  BINContVar variable("v", "label", IBINVariable::AttributeRole);
  variable.SetUserMissingInfo(MakeNine().release());
  EXPECT_EQ(DisplayOf(variable),
            Flushing("Continuous variable: name = v, label = label, role = Attribute\n"));
  std::ostringstream os;
  os << std::setprecision(3);
  variable.Display(os);
  EXPECT_EQ(os.precision(), 3);
}

TEST(WeightVarTest, TheRoleIsFixed) {
  BINWeightVar variable("w", "label", IBINVariable::RoundToClosestInt);
  variable.SetVariableRole(IBINVariable::TargetRole);
  EXPECT_EQ(variable.GetVariableRole(), IBINVariable::FrequencyWeightRole);
  EXPECT_EQ(variable.GetMeasureLevel(), IBINVariable::FrequencyWeightLevel);
  EXPECT_EQ(variable.GetNumberOfCategories(), 0);
  EXPECT_EQ(variable.UpdateNumberOfCategories(), 0);
  EXPECT_EQ(variable.GetVarStatus(), IBINVariable::VarValid);
  EXPECT_EQ(variable.GetVariableName(), "w");
  variable.SetVariableLabel("other");
  EXPECT_EQ(variable.GetVariableLabel(), "other");
  EXPECT_EQ(static_cast<const BINRoundEncoder&>(*variable.GetEncoder()).Encode(2.5), 3.0);
  const BINWeightVar& readOnly = variable;
  EXPECT_EQ(readOnly.GetEncoder(), variable.GetEncoder());
}

TEST(WeightVarTest, OwnsTheDefinitionAndLendsItToTheEncoder) {
  UserMissingCount count;
  {
    BINWeightVar variable("w", "", IBINVariable::TruncateToSmallerInt);
    auto* definition = new CountingNumericUserMissing(count);
    EXPECT_TRUE(variable.SetUserMissingInfo(definition));
    EXPECT_TRUE(variable.SetUserMissingInfo(definition));
    EXPECT_EQ(variable.GetUserMissingInfo(), definition);
    EXPECT_EQ(variable.GetEncoder()->GetUserMissingInfo(), definition);
    BINStringUserMissing refused;
    EXPECT_FALSE(variable.SetUserMissingInfo(&refused));
    EXPECT_EQ(variable.GetUserMissingInfo(), definition);
    EXPECT_EQ(variable.GetEncoder()->GetUserMissingInfo(), definition);
    EXPECT_EQ(count.destroyed, 0);
    EXPECT_TRUE(variable.SetUserMissingInfo(nullptr));
    EXPECT_EQ(variable.GetEncoder()->GetUserMissingInfo(), nullptr);
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_TRUE(variable.SetUserMissingInfo(new CountingNumericUserMissing(count)));
  }
  EXPECT_EQ(count.destroyed, 2);
  EXPECT_EQ(count.alive, 0);
}

/// A host's own definition that claims to be numeric at the first question only.
class FickleUserMissing : public mcbinning_tests::ForeignUserMissing {
 public:
  FickleUserMissing() : ForeignUserMissing(StringData) {}
  DataType GetDataType() override { return asked_++ == 0 ? NumericData : StringData; }

 private:
  int asked_ = 0;
};

TEST(WeightVarTest, TheEncoderForgetsADefinitionThatIsGoneEvenWhenItRefusesTheNext) {
  BINWeightVar variable("w", "", IBINVariable::TruncateToSmallerInt);
  EXPECT_TRUE(variable.SetUserMissingInfo(MakeNine().release()));
  EXPECT_TRUE(variable.SetUserMissingInfo(new FickleUserMissing()));
  EXPECT_EQ(variable.GetEncoder()->GetUserMissingInfo(), nullptr);
}

TEST(WeightVarTest, CloneCopiesOptionAndDefinition) {
  UserMissingCount count;
  std::unique_ptr<IBINVariable> clone;
  {
    BINWeightVar source("w", "label", IBINVariable::RoundToClosestInt);
    source.SetUserMissingInfo(new CountingNumericUserMissing(count));
    clone.reset(source.Clone());
    EXPECT_EQ(DisplayOf(*clone), DisplayOf(source));
  }
  EXPECT_EQ(count.alive, 1);
  EXPECT_EQ(clone->GetEncoder()->GetUserMissingInfo(), clone->GetUserMissingInfo());
  EXPECT_EQ(static_cast<const BINRoundEncoder&>(*clone->GetEncoder()).Encode(2.5), 3.0);
  clone.reset();
  EXPECT_EQ(count.alive, 0);
}

TEST(WeightVarTest, AssignmentKeepsTheTargetsRoundingOption) {
  UserMissingCount count;
  {
    BINWeightVar source("source", "label", IBINVariable::RoundToClosestInt);
    source.SetUserMissingInfo(new CountingNumericUserMissing(count));
    BINWeightVar target("target", "", IBINVariable::TruncateToSmallerInt);
    target.SetUserMissingInfo(new CountingNumericUserMissing(count));
    const IBINEncoder* encoder = target.GetEncoder();
    target = source;
    EXPECT_EQ(count.destroyed, 1);
    EXPECT_EQ(target.GetEncoder(), encoder);
    EXPECT_EQ(static_cast<const BINRoundEncoder*>(encoder)->Encode(2.5), 2.0);
    EXPECT_EQ(target.GetVariableName(), "source");
    EXPECT_EQ(target.GetVariableLabel(), "label");
    EXPECT_NE(target.GetUserMissingInfo(), source.GetUserMissingInfo());
    EXPECT_EQ(target.GetEncoder()->GetUserMissingInfo(), target.GetUserMissingInfo());
    const BINWeightVar& self = target;
    target = self;
    EXPECT_EQ(count.alive, 2);
    source.SetUserMissingInfo(nullptr);
    target = source;
    EXPECT_EQ(target.GetUserMissingInfo(), nullptr);
    EXPECT_EQ(target.GetEncoder()->GetUserMissingInfo(), nullptr);
  }
  EXPECT_EQ(count.alive, 0);
}

TEST(WeightVarTest, DisplayShowsTheDefinitionTwice) {
  BINWeightVar variable("w", "label", IBINVariable::RoundToClosestInt);
  EXPECT_EQ(DisplayOf(variable), Flushing("Frequency weight variable: name = w, label = label\n"
                                          "\tBINRoundEncoder: option = Round to closest int\n"
                                          "\n"));
  variable.SetUserMissingInfo(MakeNine().release());
  EXPECT_EQ(DisplayOf(variable),
            Flushing("Frequency weight variable: name = w, label = label\n"
                     "\tBINRoundEncoder: option = Round to closest int\n") +
                "\t\tUser-missing values for this encoder:\n\t\t" +
                Flushing(std::string(kDefinitionDisplay) + "\n" + kDefinitionDisplay));
}

}  // namespace
