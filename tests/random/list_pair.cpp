#include "random/list_pair.h"

#include <mcbinning/encoders.h>

#include "random/agreement.h"

namespace mcbinning_tests {

namespace {

using plain_model::Kind;
using plain_model::Variable;
using VariableRole = IBINVariable::VariableRole;

template <typename Value>
int addValues(ListPair& pair, Variable variable, const std::vector<Value>& values,
              bool withLabels) {
  variable.kind = Kind::kCategorical;
  for (const Value& value : values) {
    variable.Encode(value);
  }
  variable.declared = static_cast<int>(values.size());
  const auto role = static_cast<VariableRole>(variable.role);
  const int index = withLabels ? pair.host.AddCatVar(variable.name, variable.label, values,
                                                     variable.valueLabels, role)
                               : pair.host.AddCatVar(variable.name, variable.label, values, role);
  if (!withLabels) {
    variable.valueLabels.clear();
  }
  compare("add values", index, values.size() < 2 ? -1 : pair.plain.AddCategorical(variable));
  return index;
}

template <typename Value>
void addMissing(ListPair& pair, int index, const Value& value, const std::string& label) {
  compare("add a missing value", pair.host.AddDiscreteUserMissing(index, value, label),
          pair.plain.Has(index) && pair.plain.At(index).AddMissing(value, label));
}

}  // namespace

ListPair::ListPair(const ListPair& other) : host(other.host), plain(other.plain.Copy()) {}

ListPair& ListPair::operator=(const ListPair& other) {
  host = other.host;
  plain = other.plain.Copy();
  return *this;
}

int ListPair::AddDeclared(Variable variable) {
  variable.kind = Kind::kCategorical;
  const int index = host.AddCatVar(variable.name, variable.label, variable.declared,
                                   static_cast<IBINVariable::MeasureLevel>(variable.level),
                                   static_cast<VariableRole>(variable.role));
  compare("add declared", index, plain.AddCategorical(variable));
  return index;
}

int ListPair::AddScale(Variable variable) {
  variable.kind = Kind::kScale;
  variable.level = plain_model::kScaleLevel;
  const int index =
      host.AddContVar(variable.name, variable.label, static_cast<VariableRole>(variable.role));
  compare("add scale", index, plain.AddScale(variable));
  return index;
}

void ListPair::AddScales(const std::vector<std::string>& names, int role) {
  const int before = plain.Size();
  for (const std::string& name : names) {
    Variable variable;
    variable.name = name;
    variable.role = role;
    plain.AddScale(variable);
  }
  const auto added = static_cast<std::size_t>(plain.Size() - before);
  const bool isRefused = names.empty() || added != names.size();
  while (isRefused && plain.Size() > before) {
    plain.Remove(before);
  }
  compare("add scales", host.AddContVars(names, static_cast<VariableRole>(role)),
          isRefused ? -1 : before);
}

int ListPair::AddWeight(Variable variable) {
  variable.kind = Kind::kWeight;
  variable.level = plain_model::kWeightLevel;
  variable.role = plain_model::kWeightRole;
  const int index =
      host.AddWeightVar(variable.name, variable.label,
                        static_cast<IBINVariable::BINWRoundingOption>(variable.rounding));
  compare("add weight", index, plain.AddWeight(variable));
  return index;
}

int ListPair::AddNumbers(Variable variable, const std::vector<double>& values, bool withLabels) {
  variable.level = plain_model::kNumericLevel;
  return addValues(*this, variable, values, withLabels);
}

int ListPair::AddTexts(Variable variable, const std::vector<std::string>& values, bool withLabels) {
  variable.level = plain_model::kStringLevel;
  return addValues(*this, variable, values, withLabels);
}

void ListPair::AddMissing(int index, double value, const std::string& label) {
  addMissing(*this, index, value, label);
}

void ListPair::AddMissing(int index, const std::string& value, const std::string& label) {
  addMissing(*this, index, value, label);
}

void ListPair::SetMissingInterval(int index, double low, double high) {
  compare("set a missing interval", host.SetMissingInterval(index, low, high),
          plain.Has(index) && plain.At(index).SetMissingInterval(low, high));
}

void ListPair::SetRole(int index, int role) {
  compare("set role", host.SetVariableRole(index, static_cast<VariableRole>(role)),
          plain.SetRole(index, role));
}

void ListPair::Remove(int index) {
  compare("remove by index", host.RemoveVar(index), plain.Remove(index));
}

void ListPair::Remove(const std::string& name) {
  compare("remove by name", host.RemoveVar(name), plain.Remove(plain.Find(name)));
}

void ListPair::Encode(int index, double value) {
  compare("encode a number",
          dynamic_cast<BINCatNumEncoder&>(*host.GetEncoderAt(index)).Encode(value),
          plain.At(index).Encode(value));
}

void ListPair::Encode(int index, const std::string& value) {
  compare("encode a text", dynamic_cast<BINStringEncoder&>(*host.GetEncoderAt(index)).Encode(value),
          plain.At(index).Encode(value));
}

}  // namespace mcbinning_tests
