#include "mcbinning/variables.h"

#include <ostream>
#include <utility>

#include "mcbinning/encoders.h"
#include "model/held_user_missing.h"

namespace {

std::unique_ptr<IBINEncoder> makeCategoricalEncoder(IBINVariable::MeasureLevel level,
                                                    int numberOfCategories) {
  if (level == IBINVariable::NumericCategoricalLevel) {
    return std::make_unique<BINCatNumEncoder>(numberOfCategories);
  }
  return std::make_unique<BINStringEncoder>(numberOfCategories);
}

}  // namespace

IBINVariable::IBINVariable() = default;

IBINVariable::IBINVariable(const IBINVariable& other) = default;

IBINVariable& IBINVariable::operator=(const IBINVariable& /*other*/) = default;

IBINVariable::~IBINVariable() = default;

void IBINVariable::WriteMeasureLevelText(std::ostream& os, MeasureLevel level) {
  switch (level) {
    case UnknownLevel:
      os << "Unknown measure level";
      break;
    case ContinuousLevel:
      os << "Continuous";
      break;
    case NumericCategoricalLevel:
      os << "Numeric Categorical";
      break;
    case StringCategoricalLevel:
      os << "String Categorical";
      break;
    case FrequencyWeightLevel:
      os << "Frequency weight";
      break;
    default:
      os << "Measure level " << static_cast<int>(level);
  }
  os << std::endl;
}

void IBINVariable::WriteRoleText(std::ostream& os, VariableRole role) {
  switch (role) {
    case UndefinedRole:
      os << "Undefined variable role";
      break;
    case AttributeRole:
      os << "Attribute";
      break;
    case TargetRole:
      os << "Target";
      break;
    case FrequencyWeightRole:
      os << "Frequency weight";
      break;
    default:
      os << "Variable role " << static_cast<int>(role);
  }
  os << std::endl;
}

void IBINVariable::WriteRoundingOptionText(std::ostream& os, BINWRoundingOption option) {
  switch (option) {
    case TruncateToSmallerInt:
      os << "Truncate to smaller int";
      break;
    case RoundToClosestInt:
      os << "Round to closest int";
      break;
    default:
      break;
  }
  os << std::endl;
}

BINCatVar::BINCatVar(const std::string& name, const std::string& label, int numberOfCategories,
                     MeasureLevel level, VariableRole role)
    : name_(name),
      label_(label),
      role_(role),
      numberOfCategories_(numberOfCategories),
      measureLevel_(level),
      encoder_(makeCategoricalEncoder(level, numberOfCategories)) {}

BINCatVar::BINCatVar(const BINCatVar& other)
    : IBINVariable(other),
      name_(other.name_),
      label_(other.label_),
      role_(other.role_),
      numberOfCategories_(other.numberOfCategories_),
      measureLevel_(other.measureLevel_),
      encoder_(other.encoder_->Clone()) {}

BINCatVar& BINCatVar::operator=(const BINCatVar& other) {
  if (this != &other) {
    BINCatVar copy(other);
    name_.swap(copy.name_);
    label_.swap(copy.label_);
    role_ = copy.role_;
    numberOfCategories_ = copy.numberOfCategories_;
    measureLevel_ = copy.measureLevel_;
    encoder_.swap(copy.encoder_);
  }
  return *this;
}

BINCatVar::~BINCatVar() = default;

void BINCatVar::SetNumberOfCategories(int numberOfCategories) {
  numberOfCategories_ = numberOfCategories;
}

IBINVariable::MeasureLevel BINCatVar::GetMeasureLevel() const { return measureLevel_; }

std::string BINCatVar::GetVariableName() const { return name_; }

std::string BINCatVar::GetVariableLabel() const { return label_; }

void BINCatVar::SetVariableLabel(const std::string& label) { label_ = label; }

int BINCatVar::GetNumberOfCategories() const { return numberOfCategories_; }

IBINVariable::VariableRole BINCatVar::GetVariableRole() const { return role_; }

void BINCatVar::SetVariableRole(VariableRole role) { role_ = role; }

int BINCatVar::UpdateNumberOfCategories() {
  // Nothing is written when nothing rises: threads may make algorithms from one list.
  if (const int codes = encoder_->GetNumberOfCategories(); codes > numberOfCategories_) {
    numberOfCategories_ = codes;
  }
  return numberOfCategories_;
}

bool BINCatVar::SetUserMissingInfo(IBINUserMissing* userMissing) {
  return encoder_->SetUserMissingInfo(userMissing);
}

IBINUserMissing* BINCatVar::GetUserMissingInfo() const { return encoder_->GetUserMissingInfo(); }

IBINVariable* BINCatVar::Clone() const { return new BINCatVar(*this); }

IBINEncoder* BINCatVar::GetEncoder() { return encoder_.get(); }

const IBINEncoder* BINCatVar::GetEncoder() const { return encoder_.get(); }

IBINVariable::VarStatus BINCatVar::GetVarStatus() {
  const int numberOfCategories = UpdateNumberOfCategories();
  if (numberOfCategories == 1) {
    return VarSingleCategory;
  }
  return numberOfCategories <= 0 ? VarNoCategories : VarValid;
}

void BINCatVar::Display(std::ostream& os) const {
  os << "Categorical variable: name = " << name_ << ", label = " << label_ << ", role = ";
  WriteRoleText(os, role_);
  os << "\tMeasurement Level = ";
  WriteMeasureLevelText(os, measureLevel_);
  os << "\tNumber of Categories = " << numberOfCategories_ << std::endl;
  encoder_->Display(os);
}

BINContVar::BINContVar(const std::string& name, const std::string& label, VariableRole role)
    : name_(name), label_(label), role_(role) {}

BINContVar::BINContVar(const BINContVar& other)
    : IBINVariable(other),
      name_(other.name_),
      label_(other.label_),
      role_(other.role_),
      userMissing_(MCBinning::cloneUserMissing(other.userMissing_.get())) {}

BINContVar& BINContVar::operator=(const BINContVar& other) {
  if (this != &other) {
    BINContVar copy(other);
    name_.swap(copy.name_);
    label_.swap(copy.label_);
    role_ = copy.role_;
    userMissing_.swap(copy.userMissing_);
  }
  return *this;
}

BINContVar::~BINContVar() = default;

IBINVariable::MeasureLevel BINContVar::GetMeasureLevel() const { return ContinuousLevel; }

std::string BINContVar::GetVariableName() const { return name_; }

std::string BINContVar::GetVariableLabel() const { return label_; }

void BINContVar::SetVariableLabel(const std::string& label) { label_ = label; }

int BINContVar::GetNumberOfCategories() const { return 0; }

IBINVariable::VariableRole BINContVar::GetVariableRole() const { return role_; }

void BINContVar::SetVariableRole(VariableRole role) { role_ = role; }

int BINContVar::UpdateNumberOfCategories() { return 0; }

bool BINContVar::SetUserMissingInfo(IBINUserMissing* userMissing) {
  return MCBinning::replaceUserMissing(userMissing_, userMissing, IBINUserMissing::NumericData);
}

IBINUserMissing* BINContVar::GetUserMissingInfo() const { return userMissing_.get(); }

IBINVariable* BINContVar::Clone() const { return new BINContVar(*this); }

IBINEncoder* BINContVar::GetEncoder() { return nullptr; }

const IBINEncoder* BINContVar::GetEncoder() const { return nullptr; }

IBINVariable::VarStatus BINContVar::GetVarStatus() { return VarValid; }

void BINContVar::Display(std::ostream& os) const {
  os << "Continuous variable: name = " << name_ << ", label = " << label_ << ", role = ";
  WriteRoleText(os, role_);
}

BINWeightVar::BINWeightVar(const std::string& name, const std::string& label,
                           BINWRoundingOption option)
    : name_(name), label_(label), encoder_(std::make_unique<BINRoundEncoder>(option)) {}

BINWeightVar::BINWeightVar(const BINWeightVar& other)
    : IBINVariable(other),
      name_(other.name_),
      label_(other.label_),
      encoder_(other.encoder_->Clone()),
      userMissing_(MCBinning::cloneUserMissing(other.userMissing_.get())) {
  LendUserMissing();
}

BINWeightVar& BINWeightVar::operator=(const BINWeightVar& other) {
  if (this != &other) {
    std::string name = other.name_;
    std::string label = other.label_;
    auto userMissing = MCBinning::cloneUserMissing(other.userMissing_.get());
    name_.swap(name);
    label_.swap(label);
    userMissing_.swap(userMissing);
    LendUserMissing();
  }
  return *this;
}

BINWeightVar::~BINWeightVar() = default;

IBINVariable::MeasureLevel BINWeightVar::GetMeasureLevel() const { return FrequencyWeightLevel; }

std::string BINWeightVar::GetVariableName() const { return name_; }

std::string BINWeightVar::GetVariableLabel() const { return label_; }

void BINWeightVar::SetVariableLabel(const std::string& label) { label_ = label; }

int BINWeightVar::GetNumberOfCategories() const { return 0; }

IBINVariable::VariableRole BINWeightVar::GetVariableRole() const { return FrequencyWeightRole; }

void BINWeightVar::SetVariableRole(VariableRole /*role*/) {}

int BINWeightVar::UpdateNumberOfCategories() { return 0; }

bool BINWeightVar::SetUserMissingInfo(IBINUserMissing* userMissing) {
  if (!MCBinning::replaceUserMissing(userMissing_, userMissing, IBINUserMissing::NumericData)) {
    return false;
  }
  LendUserMissing();
  return true;
}

IBINUserMissing* BINWeightVar::GetUserMissingInfo() const { return userMissing_.get(); }

IBINVariable* BINWeightVar::Clone() const { return new BINWeightVar(*this); }

IBINEncoder* BINWeightVar::GetEncoder() { return encoder_.get(); }

const IBINEncoder* BINWeightVar::GetEncoder() const { return encoder_.get(); }

IBINVariable::VarStatus BINWeightVar::GetVarStatus() { return VarValid; }

void BINWeightVar::Display(std::ostream& os) const {
  os << "Frequency weight variable: name = " << name_ << ", label = " << label_ << std::endl;
  encoder_->Display(os);
  if (userMissing_ != nullptr) {
    userMissing_->Display(os);
  }
}

void BINWeightVar::LendUserMissing() {
  // Forget the old definition first: it may be gone, and a refused new one would leave it behind.
  encoder_->SetUserMissingInfo(nullptr);
  encoder_->SetUserMissingInfo(userMissing_.get());
}
