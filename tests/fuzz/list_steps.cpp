#include "fuzz/list_steps.h"

#include <string>
#include <vector>

#include "fuzz/check.h"

namespace fuzz {

namespace {

using MeasureLevel = IBINVariable::MeasureLevel;
using VariableRole = IBINVariable::VariableRole;

constexpr int kMostVariables = 10;

VariableModel makeVariable(Input& input, VariableModel::Kind kind, int level) {
  VariableModel variable;
  variable.kind = kind;
  variable.name = input.Text();
  variable.label = input.Text();
  variable.level = level;
  variable.role = input.OneIn(12) ? input.AnyInt() : input.Below(4);
  return variable;
}

void addWithNumbers(Input& input, ListPair& pair) {
  VariableModel variable = makeVariable(input, VariableModel::Kind::kCategorical, kNumericLevel);
  const auto role = static_cast<VariableRole>(variable.role);
  const std::vector<double> values = input.Several(6, [&] { return input.Number(); });
  for (const double value : values) {
    variable.Encode(value);
  }
  variable.declared = static_cast<int>(values.size());
  int index = -1;
  if (input.Flag()) {
    variable.valueLabels = input.Several(4, [&] { return input.Text(); });
    index = pair.list.AddCatVar(variable.name, variable.label, values, variable.valueLabels, role);
  } else {
    index = pair.list.AddCatVar(variable.name, variable.label, values, role);
  }
  check(index == (values.size() < 2 ? -1 : pair.model.AddCategorical(variable)), "add numbers");
}

void addWithTexts(Input& input, ListPair& pair) {
  VariableModel variable = makeVariable(input, VariableModel::Kind::kCategorical, kStringLevel);
  const auto role = static_cast<VariableRole>(variable.role);
  const std::vector<std::string> values = input.Several(6, [&] { return input.Text(); });
  for (const std::string& value : values) {
    variable.Encode(value);
  }
  variable.declared = static_cast<int>(values.size());
  int index = -1;
  if (input.Flag()) {
    variable.valueLabels = input.Several(4, [&] { return input.Text(); });
    index = pair.list.AddCatVar(variable.name, variable.label, values, variable.valueLabels, role);
  } else {
    index = pair.list.AddCatVar(variable.name, variable.label, values, role);
  }
  check(index == (values.size() < 2 ? -1 : pair.model.AddCategorical(variable)), "add texts");
}

void addDeclared(Input& input, ListPair& pair) {
  const int level = input.OneIn(8) ? input.AnyInt() : input.Below(6);
  VariableModel variable = makeVariable(input, VariableModel::Kind::kCategorical, level);
  variable.declared = input.OneIn(4) ? input.AnyInt() : input.Below(6);
  check(pair.list.AddCatVar(
            variable.name, variable.label, variable.declared, static_cast<MeasureLevel>(level),
            static_cast<VariableRole>(variable.role)) == pair.model.AddCategorical(variable),
        "add declared");
}

void addScale(Input& input, ListPair& pair) {
  const VariableModel variable = makeVariable(input, VariableModel::Kind::kScale, kScaleLevel);
  check(pair.list.AddContVar(variable.name, variable.label,
                             static_cast<VariableRole>(variable.role)) ==
            pair.model.AddScale(variable),
        "add scale");
}

void addWeight(Input& input, ListPair& pair) {
  VariableModel variable = makeVariable(input, VariableModel::Kind::kWeight, kWeightLevel);
  variable.role = kWeightRole;
  variable.rounding = input.OneIn(4) ? input.AnyInt() : input.Below(3);
  check(pair.list.AddWeightVar(variable.name, variable.label,
                               static_cast<IBINVariable::BINWRoundingOption>(variable.rounding)) ==
            pair.model.AddWeight(variable),
        "add weight");
}

void addVariable(Input& input, ListPair& pair) {
  if (pair.model.Size() >= kMostVariables) {
    return;
  }
  switch (input.Below(5)) {
    case 0:
      return addWithNumbers(input, pair);
    case 1:
      return addWithTexts(input, pair);
    case 2:
      return addDeclared(input, pair);
    case 3:
      return addWeight(input, pair);
    default:
      return addScale(input, pair);
  }
}

void declareMissing(Input& input, ListPair& pair) {
  const int index = input.Index(pair.list.Size());
  VariableModel* model = pair.model.At(index);
  const std::string label = input.Text();
  switch (input.Below(3)) {
    case 0: {
      const double value = input.Number();
      check(pair.list.AddDiscreteUserMissing(index, value, label) ==
                (model != nullptr && model->AddMissing(value, label)),
            "add a missing number");
      return;
    }
    case 1: {
      const std::string value = input.Text();
      check(pair.list.AddDiscreteUserMissing(index, value, label) ==
                (model != nullptr && model->AddMissing(value, label)),
            "add a missing text");
      return;
    }
    default: {
      const double low = input.Number();
      const double high = input.Number();
      check(pair.list.SetMissingInterval(index, low, high) ==
                (model != nullptr && model->SetMissingInterval(low, high)),
            "set a missing interval");
    }
  }
}

void setRole(Input& input, ListPair& pair) {
  const int index = input.Index(pair.list.Size());
  const int role = input.OneIn(12) ? input.AnyInt() : input.Below(4);
  check(pair.list.SetVariableRole(index, static_cast<VariableRole>(role)) ==
            pair.model.SetRole(index, role),
        "set role");
}

void removeVariable(Input& input, ListPair& pair) {
  if (input.Flag()) {
    const int index = input.Index(pair.list.Size());
    check(pair.list.RemoveVar(index) == pair.model.Remove(index), "remove by index");
  } else {
    const std::string name = input.Text();
    check(pair.list.RemoveVar(name) == pair.model.Remove(pair.model.Find(name)), "remove by name");
  }
}

void askValidity(ListPair& pair) {
  std::vector<int> single = {7};
  std::vector<int> empty = {7};
  std::vector<int> modelSingle;
  std::vector<int> modelEmpty;
  check(pair.list.IsValidList(single, empty) == pair.model.IsValid(modelSingle, modelEmpty),
        "validity");
  check(single == modelSingle && empty == modelEmpty, "what makes a list invalid");
}

}  // namespace

void ListPair::Copy(const ListPair& other) {
  list = other.list;
  model = other.model;
  for (VariableModel& variable : model.variables) {
    variable.isLent = variable.missing.has_value();  // a copied weight lends anew
  }
}

void stepOfList(Input& input, ListPair& pair) {
  switch (input.Below(12)) {
    case 0:
    case 1:
      return declareMissing(input, pair);
    case 2:
    case 3:
      return setRole(input, pair);
    case 4:
      return removeVariable(input, pair);
    case 5:
      return askValidity(pair);
    case 6:
      check(pair.list.UpdateNumbersOfCategories() == pair.model.UpdateNumbersOfCategories(),
            "sum of categories");
      return;
    case 7: {
      const std::string name = input.Text();
      check(pair.list.FindVariable(name) == pair.model.Find(name), "find");
      const int index = input.AnyInt();
      check((pair.list.GetVarAt(index) != nullptr) == (pair.model.At(index) != nullptr), "at");
      return;
    }
    default:
      return addVariable(input, pair);
  }
}

}  // namespace fuzz
