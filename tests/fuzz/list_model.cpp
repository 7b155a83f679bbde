#include "fuzz/list_model.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace fuzz {

namespace {

bool isSameCategory(double left, double right) {
  return left == right || (std::isnan(left) && std::isnan(right));
}

bool isSameCategory(const std::string& left, const std::string& right) { return left == right; }

template <typename Value>
double codeOf(const std::vector<Value>& byCode, const Value& value) {
  for (std::size_t code = 0; code < byCode.size(); ++code) {
    if (isSameCategory(byCode[code], value)) {
      return static_cast<double>(code);
    }
  }
  return -1.0;
}

template <typename Value>
double addCode(std::vector<Value>& byCode, const Value& value) {
  if (codeOf(byCode, value) < 0.0) {
    byCode.push_back(value);
  }
  return codeOf(byCode, value);
}

}  // namespace

bool DefinitionModel::Contains(double value) const {
  const bool isListed = std::find(numbers.begin(), numbers.end(), value) != numbers.end();
  return isListed || (interval && interval->first <= value && value <= interval->second);
}

bool DefinitionModel::Contains(const std::string& value) const {
  return std::find(texts.begin(), texts.end(), value) != texts.end();
}

bool DefinitionModel::IsEqualTo(const DefinitionModel& other) const {
  return !isForeign && !other.isForeign && isString == other.isString && numbers == other.numbers &&
         texts == other.texts && interval == other.interval;
}

double VariableModel::Encode(double value) {
  if (value == MCMV::gMissingValue || (missing && missing->Contains(value))) {
    return -1.0;
  }
  return addCode(numbers, value);
}

double VariableModel::Encode(const std::string& value) {
  return missing && missing->Contains(value) ? -1.0 : addCode(texts, value);
}

double VariableModel::EncodeConst(double value) const {
  return missing && missing->Contains(value) ? -1.0 : codeOf(numbers, value);
}

double VariableModel::EncodeConst(const std::string& value) const {
  return missing && missing->Contains(value) ? -1.0 : codeOf(texts, value);
}

void VariableModel::SetValueLabel(int code, const std::string& valueLabel) {
  valueLabels.resize(std::max(valueLabels.size(), static_cast<std::size_t>(Codes())));
  if (code >= 0 && code < Codes()) {
    valueLabels[static_cast<std::size_t>(code)] = valueLabel;
  }
}

int VariableModel::UpdateDeclared() {
  declared = std::max(declared, Codes());
  return declared;
}

bool VariableModel::AddMissing(double value, const std::string& valueLabel) {
  if (level == kStringLevel || (missing && (missing->isForeign || missing->isString))) {
    return false;
  }
  if (HasStringEncoder()) {
    return true;  // asked for and refused by the variable
  }
  isLent = isLent || !missing;
  missing = missing ? missing : DefinitionModel();
  missing->numbers.push_back(value);
  missing->labels.push_back(valueLabel);
  return true;
}

bool VariableModel::AddMissing(const std::string& value, const std::string& valueLabel) {
  if (level != kStringLevel || (missing && (missing->isForeign || !missing->isString))) {
    return false;
  }
  missing = missing ? missing : DefinitionModel();
  missing->isString = true;
  missing->texts.push_back(value);
  missing->labels.push_back(valueLabel);
  return true;
}

bool VariableModel::SetMissingInterval(double low, double high) {
  if (level == kStringLevel ||
      (missing && (missing->isForeign || missing->isString || missing->interval))) {
    return false;
  }
  if (HasStringEncoder()) {
    return true;
  }
  isLent = isLent || !missing;
  missing = missing ? missing : DefinitionModel();
  missing->interval = {low, high};
  return true;
}

bool VariableModel::CanMergeWith(const VariableModel& other) const {
  if (name != other.name || label != other.label || role != other.role || level != other.level) {
    return false;
  }
  if (role != kAttributeRole && role != kTargetRole) {
    return true;
  }
  return HasSameMissing(other) &&
         (level == kScaleLevel || (declared == Codes() && other.declared == other.Codes()));
}

bool VariableModel::HasSameMissing(const VariableModel& other) const {
  if (!missing || !other.missing) {
    return !missing && !other.missing;
  }
  // A definition of the host's equals itself only.
  return missing->IsEqualTo(*other.missing) || (missing->isForeign && this == &other);
}

VariableModel* ListModel::At(int index) {
  return index < 0 || index >= Size() ? nullptr : &variables[static_cast<std::size_t>(index)];
}

int ListModel::Find(const std::string& name) const {
  const auto found = std::find_if(variables.begin(), variables.end(),
                                  [&name](const auto& variable) { return variable.name == name; });
  return found == variables.end() ? -1 : static_cast<int>(found - variables.begin());
}

int ListModel::Add(const VariableModel& variable) {
  variables.push_back(variable);
  return Size() - 1;
}

int ListModel::AddCategorical(const VariableModel& variable) {
  if (!IsFree(variable.name)) {
    return -1;
  }
  ++categorical;
  const int index = Add(variable);
  target = variable.role == kTargetRole ? index : target;
  return index;
}

int ListModel::AddScale(const VariableModel& variable) {
  if (!IsFree(variable.name) || variable.role == kTargetRole) {
    return -1;
  }
  ++scale;
  return Add(variable);
}

int ListModel::AddWeight(const VariableModel& variable) {
  if (weight >= 0) {
    return -1;
  }
  weight = Add(variable);
  return weight;
}

bool ListModel::SetRole(int index, int role) {
  VariableModel* variable = At(index);
  if (variable == nullptr) {
    return false;
  }
  if (role == kTargetRole && target < 0) {
    target = index;
  } else if (role != kTargetRole && variable->role == kTargetRole) {
    target = -1;
  }
  if (variable->kind != VariableModel::Kind::kWeight) {
    variable->role = role;
  }
  return true;
}

bool ListModel::Remove(int index) {
  const VariableModel* removed = At(index);
  if (removed == nullptr) {
    return false;
  }
  if (removed->level == kScaleLevel) {
    --scale;
  } else if (index != weight) {
    --categorical;
  }
  if (removed->role == kTargetRole) {
    target = -1;
  } else if (index < target) {
    --target;
  }
  if (index == weight) {
    weight = -1;
  } else if (index < weight) {
    --weight;
  }
  variables.erase(variables.begin() + index);
  return true;
}

int ListModel::UpdateNumbersOfCategories() {
  long long sum = 0;
  for (VariableModel& variable : variables) {
    sum += variable.UpdateDeclared();
  }
  const long long least = std::numeric_limits<int>::min();
  const long long most = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(std::max(sum, least), most));
}

bool ListModel::IsValid(std::vector<int>& single, std::vector<int>& empty) {
  bool hasAttribute = false;
  for (int i = 0; i < Size(); ++i) {
    VariableModel& variable = *At(i);
    hasAttribute = hasAttribute || variable.role == kAttributeRole;
    variable.UpdateDeclared();
    if (variable.IsCategorical() && variable.declared < 2) {
      (variable.declared == 1 ? single : empty).push_back(i);
    }
  }
  return single.empty() && empty.empty() && hasAttribute;
}

std::optional<int> ListModel::FirstDifference(const ListModel& other) const {
  if (Size() != other.Size()) {
    return std::min(Size(), other.Size());
  }
  if (target != other.target) {
    return std::min(target, other.target);
  }
  for (std::size_t i = 0; i < variables.size(); ++i) {
    if (!variables[i].CanMergeWith(other.variables[i])) {
      return static_cast<int>(i);
    }
  }
  return std::nullopt;
}

}  // namespace fuzz
