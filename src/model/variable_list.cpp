#include "mcbinning/variable_list.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <ostream>
#include <type_traits>
#include <unordered_set>
#include <utility>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"

namespace {

bool isNameFree(const BINVarList& list, const std::string& name) {
  return !name.empty() && list.FindVariable(name) < 0;
}

/// What `make` makes, null when memory runs out.
template <typename Make>
std::unique_ptr<IBINVariable> makeOrNull(Make make) try {
  return make();
} catch (const std::bad_alloc&) {
  return nullptr;
}

/// A variable with known values for `list`, null when it is refused or memory runs out.
/// `valueLabels` may be null.
template <typename Encoder, typename Value>
std::unique_ptr<IBINVariable> makeCatVar(const BINVarList& list, const std::string& name,
                                         const std::string& label, const std::vector<Value>& values,
                                         const std::vector<std::string>* valueLabels,
                                         IBINVariable::VariableRole role) {
  return makeOrNull([&]() -> std::unique_ptr<IBINVariable> {
    if (values.size() < 2 || !isNameFree(list, name)) {
      return nullptr;
    }
    const auto level = std::is_same_v<Encoder, BINCatNumEncoder>
                           ? IBINVariable::NumericCategoricalLevel
                           : IBINVariable::StringCategoricalLevel;
    auto variable =
        std::make_unique<BINCatVar>(name, label, static_cast<int>(values.size()), level, role);
    auto& encoder = static_cast<Encoder&>(*variable->GetEncoder());
    for (const Value& value : values) {
      encoder.Encode(value);
    }
    if (valueLabels != nullptr) {
      encoder.SetValueLabels(*valueLabels);
    }
    return variable;
  });
}

/// Lets `change` work on the definition of `variable`, a new one when it has none, and answers as
/// the list does. `variable` may be null.
template <typename Definition, typename Change>
bool changeUserMissing(IBINVariable* variable, Change change) try {
  constexpr bool forStrings = std::is_same_v<Definition, BINStringUserMissing>;
  if (variable == nullptr ||
      (variable->GetMeasureLevel() == IBINVariable::StringCategoricalLevel) != forStrings) {
    return false;
  }
  if (IBINUserMissing* held = variable->GetUserMissingInfo(); held != nullptr) {
    auto* definition = dynamic_cast<Definition*>(held);
    return definition != nullptr && change(*definition);
  }
  auto definition = std::make_unique<Definition>();
  change(*definition);
  if (variable->SetUserMissingInfo(definition.get())) {
    static_cast<void>(definition.release());
  }
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace

BINVarList::BINVarList() = default;

BINVarList::BINVarList(const BINVarList& other)
    : numContVar_(other.numContVar_),
      numCatVar_(other.numCatVar_),
      targetIndex_(other.targetIndex_),
      weightIndex_(other.weightIndex_) {
  variables_.reserve(other.variables_.size());
  for (const auto& variable : other.variables_) {
    variables_.emplace_back(variable->Clone());
  }
}

BINVarList& BINVarList::operator=(const BINVarList& other) {
  if (this != &other) {
    BINVarList copy(other);
    variables_.swap(copy.variables_);
    numContVar_ = copy.numContVar_;
    numCatVar_ = copy.numCatVar_;
    targetIndex_ = copy.targetIndex_;
    weightIndex_ = copy.weightIndex_;
  }
  return *this;
}

BINVarList::~BINVarList() = default;

int BINVarList::AddCatVar(const std::string& name, const std::string& label,
                          const std::vector<double>& values, VariableRole role) {
  return AppendCatVar(makeCatVar<BINCatNumEncoder>(*this, name, label, values, nullptr, role));
}

int BINVarList::AddCatVar(const std::string& name, const std::string& label,
                          const std::vector<double>& values,
                          const std::vector<std::string>& valueLabels, VariableRole role) {
  return AppendCatVar(makeCatVar<BINCatNumEncoder>(*this, name, label, values, &valueLabels, role));
}

int BINVarList::AddCatVar(const std::string& name, const std::string& label,
                          const std::vector<std::string>& values, VariableRole role) {
  return AppendCatVar(makeCatVar<BINStringEncoder>(*this, name, label, values, nullptr, role));
}

int BINVarList::AddCatVar(const std::string& name, const std::string& label,
                          const std::vector<std::string>& values,
                          const std::vector<std::string>& valueLabels, VariableRole role) {
  return AppendCatVar(makeCatVar<BINStringEncoder>(*this, name, label, values, &valueLabels, role));
}

int BINVarList::AddCatVar(const std::string& name, const std::string& label, int numberOfCategories,
                          MeasureLevel level, VariableRole role) {
  return AppendCatVar(makeOrNull([&]() -> std::unique_ptr<IBINVariable> {
    return isNameFree(*this, name)
               ? std::make_unique<BINCatVar>(name, label, numberOfCategories, level, role)
               : nullptr;
  }));
}

int BINVarList::AddContVar(const std::string& name, const std::string& label, VariableRole role) {
  const int index = Append(makeOrNull([&]() -> std::unique_ptr<IBINVariable> {
    return role != IBINVariable::TargetRole && isNameFree(*this, name)
               ? std::make_unique<BINContVar>(name, label, role)
               : nullptr;
  }));
  if (index >= 0) {
    ++numContVar_;
  }
  return index;
}

int BINVarList::AddContVars(const std::vector<std::string>& names, VariableRole role) try {
  std::unordered_set<std::string> taken;
  for (const auto& variable : variables_) {
    taken.insert(variable->GetVariableName());
  }
  std::vector<std::unique_ptr<IBINVariable>> added;
  for (const std::string& name : names) {
    if (role == IBINVariable::TargetRole || name.empty() || !taken.insert(name).second) {
      return -1;
    }
    added.push_back(std::make_unique<BINContVar>(name, "", role));
  }
  const auto first = variables_.insert(variables_.end(), std::make_move_iterator(added.begin()),
                                       std::make_move_iterator(added.end()));
  numContVar_ += static_cast<int>(names.size());
  return names.empty() ? -1 : static_cast<int>(first - variables_.begin());
} catch (const std::bad_alloc&) {
  return -1;
}

int BINVarList::AddWeightVar(const std::string& name, const std::string& label,
                             BINWRoundingOption option) {
  if (weightIndex_ >= 0) {
    return -1;
  }
  weightIndex_ = Append(makeOrNull([&]() -> std::unique_ptr<IBINVariable> {
    return std::make_unique<BINWeightVar>(name, label, option);
  }));
  return weightIndex_;
}

bool BINVarList::AddDiscreteUserMissing(int index, const std::string& value,
                                        const std::string& label) {
  return changeUserMissing<BINStringUserMissing>(GetVarAt(index),
                                                 [&](BINStringUserMissing& definition) {
                                                   definition.AddValue(value, label);
                                                   return true;
                                                 });
}

bool BINVarList::AddDiscreteUserMissing(int index, double value, const std::string& label) {
  return changeUserMissing<BINNumericUserMissing>(GetVarAt(index),
                                                  [&](BINNumericUserMissing& definition) {
                                                    definition.AddValue(value, label);
                                                    return true;
                                                  });
}

bool BINVarList::SetMissingInterval(int index, double low, double high) {
  return changeUserMissing<BINNumericUserMissing>(
      GetVarAt(index), [&](BINNumericUserMissing& definition) {
        if (definition.HasInterval()) {
          return false;
        }
        definition.SetInterval(BINNumericInterval(low, high));
        return true;
      });
}

int BINVarList::FindVariable(const std::string& name) const {
  const auto found =
      std::find_if(variables_.begin(), variables_.end(),
                   [&name](const auto& variable) { return variable->GetVariableName() == name; });
  return found == variables_.end() ? -1 : static_cast<int>(found - variables_.begin());
}

IBINVariable* BINVarList::GetVarAt(int index) {
  return HasIndex(index) ? variables_[static_cast<std::size_t>(index)].get() : nullptr;
}

const IBINVariable* BINVarList::GetVarAt(int index) const {
  return HasIndex(index) ? variables_[static_cast<std::size_t>(index)].get() : nullptr;
}

IBINEncoder* BINVarList::GetEncoderAt(int index) {
  IBINVariable* variable = GetVarAt(index);
  return variable != nullptr ? variable->GetEncoder() : nullptr;
}

const IBINEncoder* BINVarList::GetEncoderAt(int index) const {
  const IBINVariable* variable = GetVarAt(index);
  return variable != nullptr ? variable->GetEncoder() : nullptr;
}

IBINVariable::VariableRole BINVarList::GetVariableRole(int index) {
  const IBINVariable* variable = GetVarAt(index);
  return variable != nullptr ? variable->GetVariableRole() : IBINVariable::UndefinedRole;
}

int BINVarList::GetTargetIndex() const { return targetIndex_; }

IBINVariable* BINVarList::GetTargetVariable() const {
  return HasIndex(targetIndex_) ? variables_[static_cast<std::size_t>(targetIndex_)].get()
                                : nullptr;
}

int BINVarList::GetWeightIndex() const { return weightIndex_; }

int BINVarList::GetNTargetCats() const {
  const auto target = std::find_if(variables_.begin(), variables_.end(), [](const auto& variable) {
    return variable->GetVariableRole() == IBINVariable::TargetRole;
  });
  return target == variables_.end() ? 0 : (*target)->GetNumberOfCategories();
}

int BINVarList::GetNumAttributeVars() const {
  return static_cast<int>(
      std::count_if(variables_.begin(), variables_.end(), [](const auto& variable) {
        return variable->GetVariableRole() == IBINVariable::AttributeRole;
      }));
}

int BINVarList::GetNumCatVar() const { return numCatVar_; }

int BINVarList::GetNumContVar() const { return numContVar_; }

void BINVarList::GetVarNames(std::vector<std::string>& attributeNames,
                             std::string& targetName) const {
  std::vector<std::string> attributes;
  std::string target = targetName;
  for (const auto& variable : variables_) {
    const auto role = variable->GetVariableRole();
    if (role == IBINVariable::AttributeRole) {
      attributes.push_back(variable->GetVariableName());
    } else if (role == IBINVariable::TargetRole) {
      target = variable->GetVariableName();
    }
  }
  attributeNames.swap(attributes);
  targetName.swap(target);
}

std::uint64_t BINVarList::Size() const { return variables_.size(); }

int BINVarList::UpdateNumbersOfCategories() {
  std::int64_t sum = 0;
  for (const auto& variable : variables_) {
    sum += variable->UpdateNumberOfCategories();
  }
  return static_cast<int>(std::min<std::int64_t>(sum, std::numeric_limits<int>::max()));
}

bool BINVarList::SetVariableRole(int index, VariableRole role) {
  IBINVariable* variable = GetVarAt(index);
  if (variable == nullptr) {
    return false;
  }
  if (role == IBINVariable::TargetRole) {
    if (targetIndex_ < 0) {
      targetIndex_ = index;
    }
  } else if (variable->GetVariableRole() == IBINVariable::TargetRole) {
    targetIndex_ = -1;
  }
  variable->SetVariableRole(role);
  return true;
}

bool BINVarList::RemoveVar(int index) {
  const IBINVariable* variable = GetVarAt(index);
  if (variable == nullptr) {
    return false;
  }
  const auto level = variable->GetMeasureLevel();
  const auto role = variable->GetVariableRole();
  variables_.erase(variables_.begin() + index);
  if (level == IBINVariable::ContinuousLevel) {
    --numContVar_;
  } else if (index != weightIndex_) {
    --numCatVar_;
  }
  if (role == IBINVariable::TargetRole) {
    targetIndex_ = -1;
  } else if (index < targetIndex_) {
    --targetIndex_;
  }
  if (index == weightIndex_) {
    weightIndex_ = -1;
  } else if (index < weightIndex_) {
    --weightIndex_;
  }
  return true;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes it by value
bool BINVarList::RemoveVar(std::string name) try {
  return RemoveVar(FindVariable(name));
} catch (const std::bad_alloc&) {
  return false;
}

bool BINVarList::IsValidList(std::vector<int>& singleCategoryVars,
                             std::vector<int>& emptyVars) const {
  std::vector<int> single;
  std::vector<int> empty;
  for (std::size_t i = 0; i < variables_.size(); ++i) {
    const auto status = variables_[i]->GetVarStatus();
    if (status == IBINVariable::VarSingleCategory) {
      single.push_back(static_cast<int>(i));
    } else if (status == IBINVariable::VarNoCategories) {
      empty.push_back(static_cast<int>(i));
    }
  }
  singleCategoryVars.swap(single);
  emptyVars.swap(empty);
  return singleCategoryVars.empty() && emptyVars.empty() && GetNumAttributeVars() > 0;
}

void BINVarList::Display(std::ostream& os) const {
  os << "\bINegin display of BINVarList object.\n";
  os << "Total variables: " << variables_.size() << std::endl;
  os << "Number of Continuous Variables = " << numContVar_ << std::endl;
  os << "Number of Categorical Variables  = " << numCatVar_ << std::endl;
  if (targetIndex_ >= 0) {
    os << "Target Index  = " << targetIndex_ << std::endl;
  }
  for (std::size_t i = 0; i < variables_.size(); ++i) {
    os << "Variable " << i << std::endl;
    variables_[i]->Display(os);
  }
  os << "End of display for BINVarList object.\n";
}

bool BINVarList::HasIndex(int index) const {
  return index >= 0 && static_cast<std::size_t>(index) < variables_.size();
}

int BINVarList::Append(std::unique_ptr<IBINVariable> variable) try {
  if (variable == nullptr) {
    return -1;
  }
  variables_.push_back(std::move(variable));
  return static_cast<int>(variables_.size()) - 1;
} catch (const std::bad_alloc&) {
  return -1;
}

int BINVarList::AppendCatVar(std::unique_ptr<IBINVariable> variable) {
  const int index = Append(std::move(variable));
  if (index >= 0) {
    ++numCatVar_;
    if (variables_.back()->GetVariableRole() == IBINVariable::TargetRole) {
      targetIndex_ = index;
    }
  }
  return index;
}
