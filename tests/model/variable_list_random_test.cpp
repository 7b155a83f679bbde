// BINVarList against a plain model of its bookkeeping: random calls, every answer compared.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "mcbinning/variable_list.h"

namespace {

struct ModelVariable {
  ModelVariable(std::string variableName, int measureLevel, int variableRole, int categories)
      : name(std::move(variableName)),
        level(measureLevel),
        role(variableRole),
        declared(categories),
        takesNumeric(measureLevel == 1 || measureLevel == 2 || measureLevel == 4) {}

  std::string name;
  int level;
  int role;
  int declared;          // stored number of categories
  std::set<int> values;  // met by the encoder
  int discrete = 0;      // user-missing values
  bool hasInterval = false;
  bool takesNumeric;  // the kind of user-missing definition
};

struct Model {
  std::vector<ModelVariable> variables;
  int scale = 0;
  int categorical = 0;
  int target = -1;
  int weight = -1;

  int Find(const std::string& name) const {
    for (std::size_t i = 0; i < variables.size(); ++i) {
      if (variables[i].name == name) {
        return static_cast<int>(i);
      }
    }
    return -1;
  }

  ModelVariable* At(int index) {
    return index < 0 || index >= static_cast<int>(variables.size())
               ? nullptr
               : &variables[static_cast<std::size_t>(index)];
  }

  int Add(const ModelVariable& variable) {
    variables.push_back(variable);
    return static_cast<int>(variables.size()) - 1;
  }

  int AddCategorical(const ModelVariable& variable, bool enoughValues) {
    if (!enoughValues || variable.name.empty() || Find(variable.name) >= 0) {
      return -1;
    }
    const int index = Add(variable);
    ++categorical;
    if (variable.role == 2) {
      target = index;
    }
    return index;
  }

  bool Remove(int index) {
    if (At(index) == nullptr) {
      return false;
    }
    const ModelVariable removed = *At(index);
    variables.erase(variables.begin() + index);
    if (removed.level == 1) {
      --scale;
    } else if (index != weight) {
      --categorical;
    }
    target = removed.role == 2 ? -1 : target - (index < target ? 1 : 0);
    weight = index == weight ? -1 : weight - (index < weight ? 1 : 0);
    return true;
  }

  bool SetRole(int index, int role) {
    ModelVariable* variable = At(index);
    if (variable == nullptr) {
      return false;
    }
    if (role == 2 && target < 0) {
      target = index;
    }
    if (role != 2 && variable->role == 2) {
      target = -1;
    }
    if (index != weight) {
      variable->role = role;
    }
    return true;
  }
};

class VariableListRandomTest : public testing::TestWithParam<unsigned int> {
 protected:
  int Draw(int bound) { return static_cast<int>(random_() % static_cast<unsigned int>(bound)); }
  int DrawIndex() { return Draw(static_cast<int>(model_.variables.size()) + 2) - 1; }
  std::string DrawName() {
    return std::string(static_cast<std::size_t>(Draw(3)), 'v') +
           (Draw(8) == 0 ? "" : std::to_string(Draw(12)));
  }

  void AddNumeric();
  void AddStrings();
  void AddDeclared();
  void AddScaleOrWeight();
  void ChangeUserMissing();
  void ChangeRoleOrRemove();
  void MeetValue();
  void CompareVariables();
  void CompareQueries();
  void CompareValidity();

  std::mt19937 random_{GetParam()};
  BINVarList list_;
  Model model_;
};

void VariableListRandomTest::AddNumeric() {
  std::vector<double> values(static_cast<std::size_t>(Draw(5)));
  ModelVariable variable(DrawName(), 2, Draw(3), static_cast<int>(values.size()));
  for (double& value : values) {
    const int drawn = Draw(4);
    value = drawn;
    variable.values.insert(drawn);
  }
  EXPECT_EQ(list_.AddCatVar(variable.name, "", values,
                            static_cast<IBINVariable::VariableRole>(variable.role)),
            model_.AddCategorical(variable, values.size() >= 2));
}

void VariableListRandomTest::AddStrings() {
  std::vector<std::string> values(static_cast<std::size_t>(Draw(5)));
  ModelVariable variable(DrawName(), 3, Draw(3), static_cast<int>(values.size()));
  for (std::string& value : values) {
    const int drawn = Draw(4);
    value = std::to_string(drawn);
    variable.values.insert(drawn);
  }
  EXPECT_EQ(list_.AddCatVar(variable.name, "", values,
                            static_cast<IBINVariable::VariableRole>(variable.role)),
            model_.AddCategorical(variable, values.size() >= 2));
}

void VariableListRandomTest::AddDeclared() {
  ModelVariable variable(DrawName(), Draw(6), Draw(3), Draw(6) - 1);
  variable.takesNumeric = variable.level == 2;  // any other level has a string encoder
  EXPECT_EQ(list_.AddCatVar(variable.name, "", variable.declared,
                            static_cast<IBINVariable::MeasureLevel>(variable.level),
                            static_cast<IBINVariable::VariableRole>(variable.role)),
            model_.AddCategorical(variable, true));
}

void VariableListRandomTest::AddScaleOrWeight() {
  const std::string name = DrawName();
  if (Draw(3) == 0) {
    const int expected = model_.weight >= 0 ? -1 : model_.Add({name, 4, 3, 0});
    if (expected >= 0) {
      model_.weight = expected;
    }
    EXPECT_EQ(list_.AddWeightVar(name, "", IBINVariable::TruncateToSmallerInt), expected);
    return;
  }
  const int role = Draw(3);
  int expected = -1;
  if (!name.empty() && model_.Find(name) < 0 && role != 2) {
    expected = model_.Add({name, 1, role, 0});
    ++model_.scale;
  }
  EXPECT_EQ(list_.AddContVar(name, "", static_cast<IBINVariable::VariableRole>(role)), expected);
}

void VariableListRandomTest::ChangeUserMissing() {
  const int index = DrawIndex();
  ModelVariable* variable = model_.At(index);
  const int call = Draw(3);
  if (call == 0) {
    const bool expected = variable != nullptr && variable->level == 3;
    EXPECT_EQ(list_.AddDiscreteUserMissing(index, std::string("9"), ""), expected);
    variable != nullptr&& expected ? ++variable->discrete : 0;
    return;
  }
  bool expected = variable != nullptr && variable->level != 3;
  if (call == 1) {
    EXPECT_EQ(list_.AddDiscreteUserMissing(index, 9.0, ""), expected);
    if (expected && variable->takesNumeric) {
      ++variable->discrete;
    }
    return;
  }
  expected = expected && !variable->hasInterval;
  EXPECT_EQ(list_.SetMissingInterval(index, 100.0, 200.0), expected);
  if (expected && variable->takesNumeric) {
    variable->hasInterval = true;
  }
}

void VariableListRandomTest::ChangeRoleOrRemove() {
  const int index = DrawIndex();
  switch (Draw(8)) {
    case 0:
      EXPECT_EQ(list_.RemoveVar(index), model_.Remove(index));
      break;
    case 1: {
      const std::string name = DrawName();
      EXPECT_EQ(list_.RemoveVar(name), model_.Remove(model_.Find(name)));
      break;
    }
    default: {
      const int role = Draw(5);
      EXPECT_EQ(list_.SetVariableRole(index, static_cast<IBINVariable::VariableRole>(role)),
                model_.SetRole(index, role));
    }
  }
}

void VariableListRandomTest::MeetValue() {
  const int index = DrawIndex();
  ModelVariable* variable = model_.At(index);
  if (variable == nullptr || list_.GetEncoderAt(index) == nullptr) {
    return;
  }
  const int value = Draw(9);
  if (auto* numeric = dynamic_cast<BINCatNumEncoder*>(list_.GetEncoderAt(index))) {
    numeric->Encode(value);
    variable->values.insert(value);
  } else if (auto* string = dynamic_cast<BINStringEncoder*>(list_.GetEncoderAt(index))) {
    string->Encode(std::to_string(value));
    variable->values.insert(value);
  }
}

void VariableListRandomTest::CompareVariables() {
  ASSERT_EQ(list_.Size(), model_.variables.size());
  for (std::size_t i = 0; i < model_.variables.size(); ++i) {
    const ModelVariable& expected = model_.variables[i];
    const int index = static_cast<int>(i);
    const IBINVariable* variable = list_.GetVarAt(index);
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(variable->GetVariableName(), expected.name);
    EXPECT_EQ(variable->GetMeasureLevel(), expected.level);
    EXPECT_EQ(list_.GetVariableRole(index), expected.role);
    EXPECT_EQ(variable->GetNumberOfCategories(), expected.declared);
    const IBINEncoder* encoder = list_.GetEncoderAt(index);
    EXPECT_EQ(encoder != nullptr ? encoder->GetNumberOfCategories() : 0,
              static_cast<int>(expected.values.size()));
    const IBINUserMissing* definition = variable->GetUserMissingInfo();
    EXPECT_EQ(definition != nullptr, expected.discrete > 0 || expected.hasInterval);
    if (definition != nullptr) {
      EXPECT_EQ(definition->GetNDiscreteValues(), expected.discrete);
      EXPECT_EQ(definition->HasInterval(), expected.hasInterval);
    }
  }
}

void VariableListRandomTest::CompareQueries() {
  EXPECT_EQ(list_.GetNumContVar(), model_.scale);
  EXPECT_EQ(list_.GetNumCatVar(), model_.categorical);
  EXPECT_EQ(list_.GetTargetIndex(), model_.target);
  EXPECT_EQ(list_.GetWeightIndex(), model_.weight);
  EXPECT_EQ(list_.GetTargetVariable(), list_.GetVarAt(model_.target));
  std::vector<std::string> attributes;
  std::string target = "none";
  int targetCategories = 0;
  bool targetSeen = false;
  for (const ModelVariable& variable : model_.variables) {
    if (variable.role == 1) {
      attributes.push_back(variable.name);
    }
    if (variable.role == 2) {
      target = variable.name;
      targetCategories = targetSeen ? targetCategories : variable.declared;
      targetSeen = true;
    }
  }
  std::vector<std::string> listAttributes;
  std::string listTarget = "none";
  list_.GetVarNames(listAttributes, listTarget);
  EXPECT_EQ(listAttributes, attributes);
  EXPECT_EQ(listTarget, target);
  EXPECT_EQ(list_.GetNumAttributeVars(), static_cast<int>(attributes.size()));
  EXPECT_EQ(list_.GetNTargetCats(), targetCategories);
  const std::string name = DrawName();
  EXPECT_EQ(list_.FindVariable(name), model_.Find(name));
}

void VariableListRandomTest::CompareValidity() {
  std::vector<int> single;
  std::vector<int> none;
  bool hasAttribute = false;
  int sum = 0;
  for (std::size_t i = 0; i < model_.variables.size(); ++i) {
    ModelVariable& variable = model_.variables[i];
    hasAttribute = hasAttribute || variable.role == 1;
    if (list_.GetEncoderAt(static_cast<int>(i)) == nullptr ||
        static_cast<int>(i) == model_.weight) {
      continue;
    }
    variable.declared = std::max(variable.declared, static_cast<int>(variable.values.size()));
    sum += variable.declared;
    if (variable.declared < 2) {
      (variable.declared == 1 ? single : none).push_back(static_cast<int>(i));
    }
  }
  std::vector<int> listSingle;
  std::vector<int> listNone;
  EXPECT_EQ(list_.IsValidList(listSingle, listNone),
            single.empty() && none.empty() && hasAttribute);
  EXPECT_EQ(listSingle, single);
  EXPECT_EQ(listNone, none);
  EXPECT_EQ(list_.UpdateNumbersOfCategories(), sum);
}

TEST_P(VariableListRandomTest, AgreesWithThePlainModel) {
  SCOPED_TRACE(testing::Message() << "seed " << GetParam());
  for (int step = 0; step < 400 && !HasFailure(); ++step) {
    SCOPED_TRACE(testing::Message() << "step " << step);
    switch (Draw(10)) {
      case 0:
        AddNumeric();
        break;
      case 1:
        AddStrings();
        break;
      case 2:
        AddDeclared();
        break;
      case 3:
        AddScaleOrWeight();
        break;
      case 4:
        MeetValue();
        break;
      case 5:
        list_ = BINVarList(list_);
        break;
      case 6:
        CompareValidity();
        break;
      case 7:
        ChangeUserMissing();
        break;
      default:
        ChangeRoleOrRemove();
    }
    CompareVariables();
    CompareQueries();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, VariableListRandomTest, testing::Range(1U, 31U));

}  // namespace
