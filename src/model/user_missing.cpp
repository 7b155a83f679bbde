#include "mcbinning/user_missing.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace {

// By value: what is added may stand in one of the vectors.
template <typename Value>
void addLabelled(std::vector<Value>& values, Value value, std::vector<std::string>& labels,
                 std::string label) {
  values.push_back(std::move(value));
  try {
    labels.push_back(std::move(label));
  } catch (...) {
    values.pop_back();
    throw;
  }
}

template <typename Value>
bool containsValue(const std::vector<Value>& values, const Value& value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

template <typename Value>
void displayLabelled(std::ostream& os, const std::vector<Value>& values,
                     const std::vector<std::string>& labels) {
  if (values.empty()) {
    return;
  }
  os << "Discrete missing values:" << std::endl;
  for (std::size_t i = 0; i < values.size(); ++i) {
    os << "\t" << i << "\t" << values[i] << ", label = " << labels[i] << std::endl;
  }
}

}  // namespace

IBINUserMissing::IBINUserMissing() = default;

IBINUserMissing::IBINUserMissing(const IBINUserMissing& other) = default;

IBINUserMissing& IBINUserMissing::operator=(const IBINUserMissing& /*other*/) = default;

IBINUserMissing::~IBINUserMissing() = default;

BINNumericUserMissing::BINNumericUserMissing() = default;

BINNumericUserMissing::BINNumericUserMissing(const BINNumericUserMissing& other) = default;

BINNumericUserMissing& BINNumericUserMissing::operator=(const BINNumericUserMissing& other) {
  BINNumericUserMissing copy(other);
  discreteValues_.swap(copy.discreteValues_);
  valueLabels_.swap(copy.valueLabels_);
  interval_ = copy.interval_;
  hasInterval_ = copy.hasInterval_;
  return *this;
}

BINNumericUserMissing::~BINNumericUserMissing() = default;

void BINNumericUserMissing::AddValue(double value, const std::string& label) {
  addLabelled(discreteValues_, value, valueLabels_, label);
}

void BINNumericUserMissing::SetInterval(const BINNumericInterval& interval) {
  interval_ = interval;
  hasInterval_ = true;
}

const BINNumericInterval* BINNumericUserMissing::GetInterval() const {
  return hasInterval_ ? &interval_ : nullptr;
}

const std::vector<double>& BINNumericUserMissing::GetDiscreteValues() const {
  return discreteValues_;
}

const std::vector<std::string>& BINNumericUserMissing::GetValueLabels() const {
  return valueLabels_;
}

bool BINNumericUserMissing::Contains(double value) const {
  return containsValue(discreteValues_, value) || (hasInterval_ && interval_.Contains(value));
}

IBINUserMissing::DataType BINNumericUserMissing::GetDataType() { return NumericData; }

int BINNumericUserMissing::GetNDiscreteValues() const {
  return static_cast<int>(discreteValues_.size());
}

bool BINNumericUserMissing::HasInterval() const { return hasInterval_; }

IBINUserMissing* BINNumericUserMissing::Clone() const { return new BINNumericUserMissing(*this); }

bool BINNumericUserMissing::IsEqualTo(const IBINUserMissing* other) const {
  const auto* numeric = dynamic_cast<const BINNumericUserMissing*>(other);
  return numeric != nullptr && hasInterval_ == numeric->hasInterval_ &&
         discreteValues_ == numeric->discreteValues_ &&
         (!hasInterval_ || interval_ == numeric->interval_);
}

void BINNumericUserMissing::Display(std::ostream& os) const {
  os << std::endl << "Start of BINNumericUserMissing display" << std::endl;
  displayLabelled(os, discreteValues_, valueLabels_);
  if (hasInterval_) {
    os << "Missing interval:" << std::endl;
    interval_.Display(os);
  }
  os << "End of BINNumericUserMissing display" << std::endl;
}

BINStringUserMissing::BINStringUserMissing() = default;

BINStringUserMissing::BINStringUserMissing(const BINStringUserMissing& other) = default;

BINStringUserMissing& BINStringUserMissing::operator=(const BINStringUserMissing& other) {
  BINStringUserMissing copy(other);
  discreteValues_.swap(copy.discreteValues_);
  valueLabels_.swap(copy.valueLabels_);
  return *this;
}

BINStringUserMissing::~BINStringUserMissing() = default;

void BINStringUserMissing::AddValue(const std::string& value, const std::string& label) {
  addLabelled(discreteValues_, value, valueLabels_, label);
}

const std::vector<std::string>& BINStringUserMissing::GetDiscreteValues() const {
  return discreteValues_;
}

const std::vector<std::string>& BINStringUserMissing::GetValueLabels() const {
  return valueLabels_;
}

bool BINStringUserMissing::Contains(const std::string& value) const {
  return containsValue(discreteValues_, value);
}

IBINUserMissing::DataType BINStringUserMissing::GetDataType() { return StringData; }

int BINStringUserMissing::GetNDiscreteValues() const {
  return static_cast<int>(discreteValues_.size());
}

bool BINStringUserMissing::HasInterval() const { return false; }

IBINUserMissing* BINStringUserMissing::Clone() const { return new BINStringUserMissing(*this); }

bool BINStringUserMissing::IsEqualTo(const IBINUserMissing* other) const {
  const auto* string = dynamic_cast<const BINStringUserMissing*>(other);
  return string != nullptr && discreteValues_ == string->discreteValues_;
}

void BINStringUserMissing::Display(std::ostream& os) const {
  os << std::endl << "Start of BINStringUserMissing display" << std::endl;
  displayLabelled(os, discreteValues_, valueLabels_);
  os << "End of BINStringUserMissing display" << std::endl;
}
