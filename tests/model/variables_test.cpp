#include "mcbinning/variables.h"

#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <memory>
#include <sstream>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "support/counting_user_missing.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
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
