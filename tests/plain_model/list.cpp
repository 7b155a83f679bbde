#include "plain_model/list.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plain_model {

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

bool Definition::Contains(double value) const {
  const bool isListed = std::find(numbers.begin(), numbers.end(), value) != numbers.end();
  return isListed || (interval && interval->first <= value && value <= interval->second);
}

bool Definition::Contains(const std::string& value) const {
  return std::find(texts.begin(), texts.end(), value) != texts.end();
}

bool Definition::IsEqualTo(const Definition& other) const {
  return !isForeign && !other.isForeign && isString == other.isString && numbers == other.numbers &&
         texts == other.texts && interval == other.interval;
}

double Variable::Encode(double value) {
  if (value == MCMV::gMissingValue || IsMissing(value)) {
    return -1.0;
  }
  return addCode(numbers, value);
}

double Variable::Encode(const std::string& value) {
  return missing && missing->Contains(value) ? -1.0 : addCode(texts, value);
}

double Variable::EncodeConst(double value) const {
  return IsMissing(value) ? -1.0 : codeOf(numbers, value);
}

double Variable::EncodeConst(const std::string& value) const {
  return missing && missing->Contains(value) ? -1.0 : codeOf(texts, value);
}

std::optional<double> Variable::EncodeWeight(double raw) const {
  if (raw == MCMV::gMissingValue || !std::isfinite(raw) || (isLent && IsMissing(raw))) {
    return std::nullopt;
  }
  double rounded = raw;
  if (rounding == 0) {
    rounded = std::floor(raw);
  } else if (rounding == 1) {
    rounded = std::floor(raw + 0.5);
  }
  if (rounded <= 0.0) {
    return std::nullopt;
  }
  return rounded;
}

void Variable::SetValueLabel(int code, const std::string& valueLabel) {
  valueLabels.resize(std::max(valueLabels.size(), static_cast<std::size_t>(Codes())));
  if (code >= 0 && code < Codes()) {
    valueLabels[static_cast<std::size_t>(code)] = valueLabel;
  }
}

int Variable::UpdateDeclared() {
  declared = Categories();
  return declared;
}

bool Variable::AddMissing(double value, const std::string& valueLabel) {
  if (level == kStringLevel || (missing && (missing->isForeign || missing->isString))) {
    return false;
  }
  if (HasStringEncoder()) {
    return true;  // asked for and refused by the variable
  }
  isLent = isLent || !missing;
  missing = missing ? missing : Definition();
  missing->numbers.push_back(value);
  missing->labels.push_back(valueLabel);
  return true;
}

bool Variable::AddMissing(const std::string& value, const std::string& valueLabel) {
  if (level != kStringLevel || (missing && (missing->isForeign || !missing->isString))) {
    return false;
  }
  missing = missing ? missing : Definition();
  missing->isString = true;
  missing->texts.push_back(value);
  missing->labels.push_back(valueLabel);
  return true;
}

bool Variable::SetMissingInterval(double low, double high) {
  if (level == kStringLevel ||
      (missing && (missing->isForeign || missing->isString || missing->interval))) {
    return false;
  }
  if (HasStringEncoder()) {
    return true;
  }
  isLent = isLent || !missing;
  missing = missing ? missing : Definition();
  missing->interval = {low, high};
  return true;
}

bool Variable::CanMergeWith(const Variable& other) const {
  if (name != other.name || label != other.label || role != other.role || level != other.level) {
    return false;
  }
  if (role != kAttributeRole && role != kTargetRole) {
    return true;
  }
  return HasSameMissing(other) &&
         (level == kScaleLevel || (declared == Codes() && other.declared == other.Codes()));
}

bool Variable::HasSameMissing(const Variable& other) const {
  if (!missing || !other.missing) {
    return !missing && !other.missing;
  }
  // A definition of the host's equals itself only.
  return missing->IsEqualTo(*other.missing) || (missing->isForeign && this == &other);
}

int VariableList::Find(const std::string& name) const {
  const auto found = std::find_if(variables.begin(), variables.end(),
                                  [&name](const auto& variable) { return variable.name == name; });
  return found == variables.end() ? -1 : static_cast<int>(found - variables.begin());
}

int VariableList::Add(const Variable& variable) {
  variables.push_back(variable);
  return Size() - 1;
}

int VariableList::AddCategorical(const Variable& variable) {
  if (!IsFree(variable.name)) {
    return -1;
  }
  ++categorical;
  const int index = Add(variable);
  target = variable.role == kTargetRole ? index : target;
  return index;
}

int VariableList::AddScale(const Variable& variable) {
  if (!IsFree(variable.name) || variable.role == kTargetRole) {
    return -1;
  }
  ++scale;
  return Add(variable);
}

int VariableList::AddWeight(const Variable& variable) {
  if (weight >= 0) {
    return -1;
  }
  weight = Add(variable);
  return weight;
}

bool VariableList::SetRole(int index, int role) {
  if (!Has(index)) {
    return false;
  }
  Variable& variable = At(index);
  if (role == kTargetRole && target < 0) {
    target = index;
  } else if (role != kTargetRole && variable.role == kTargetRole) {
    target = -1;
  }
  if (variable.kind != Kind::kWeight) {
    variable.role = role;
  }
  return true;
}

bool VariableList::Remove(int index) {
  if (!Has(index)) {
    return false;
  }
  const Variable& removed = At(index);
  if (removed.level == kScaleLevel) {
    --scale;
  } else if (index != weight) {
    --categorical;
  }
  if (removed.role == kTargetRole) {
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

int VariableList::UpdateNumbersOfCategories() {
  long long sum = 0;
  for (Variable& variable : variables) {
    sum += variable.UpdateDeclared();
  }
  const long long least = std::numeric_limits<int>::min();
  const long long most = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(std::max(sum, least), most));
}

bool VariableList::IsValid(std::vector<int>& single, std::vector<int>& empty) {
  bool hasAttribute = false;
  for (int i = 0; i < Size(); ++i) {
    Variable& variable = At(i);
    hasAttribute = hasAttribute || variable.role == kAttributeRole;
    variable.UpdateDeclared();
    if (variable.IsCategorical() && variable.declared < 2) {
      (variable.declared == 1 ? single : empty).push_back(i);
    }
  }
  return single.empty() && empty.empty() && hasAttribute;
}

VariableList VariableList::Copy() const {
  VariableList copy = *this;
  for (Variable& variable : copy.variables) {
    variable.isLent = variable.missing.has_value();
  }
  return copy;
}

std::optional<int> VariableList::FirstDifference(const VariableList& other) const {
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

}  // namespace plain_model
