#include "mcbinning/encoders.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

#include "model/held_user_missing.h"

namespace {

constexpr double kMissingCode = -1.0;

// The data pass takes no code above 255; a declared count can be anything.
constexpr int kLargestReservation = 256;

std::size_t reservation(int expectedCategories) {
  return static_cast<std::size_t>(std::clamp(expectedCategories, 0, kLargestReservation));
}

// The label by value: it may stand among the labels.
void setLabel(std::vector<std::string>& labels, int numberOfCategories, int code,
              std::string label) {
  const auto size = static_cast<std::size_t>(numberOfCategories);
  if (labels.size() < size) {
    labels.resize(size);
  }
  if (code >= 0 && code < numberOfCategories) {
    labels[static_cast<std::size_t>(code)] = std::move(label);
  }
}

/// Enters `value` in `codes` with the next code and in the parallel vector as what `element` makes
/// of the map's entry; returns the code of `value`, new or not.
template <typename Map, typename Vector, typename Element>
int addCode(Map& codes, Vector& byCode, int& lastCode, const typename Map::key_type& value,
            Element element) {
  const auto [entry, added] = codes.try_emplace(value, lastCode + 1);
  if (added) {
    try {
      byCode.push_back(element(entry->first));
    } catch (...) {
      codes.erase(entry);
      throw;
    }
    ++lastCode;
  }
  return entry->second;
}

template <typename Map>
double knownCode(const Map& codes, const typename Map::key_type& value) {
  const auto entry = codes.find(value);
  return entry == codes.end() ? kMissingCode : entry->second;
}

template <typename Value>
void displayInSevens(std::ostream& os, const std::vector<Value>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    os << values[i] << " ";
    if (i % 7 == 6) {
      os << std::endl;
    }
  }
  os << std::endl;
}

}  // namespace

IBINEncoder::IBINEncoder() = default;

IBINEncoder::IBINEncoder(const IBINEncoder& other) = default;

IBINEncoder& IBINEncoder::operator=(const IBINEncoder& /*other*/) = default;

IBINEncoder::~IBINEncoder() = default;

bool BINCatNumEncoder::NaNLast::operator()(double left, double right) const {
  return left < right || (std::isnan(right) && !std::isnan(left));
}

BINCatNumEncoder::BINCatNumEncoder(int expectedCategories) {
  values_.reserve(reservation(expectedCategories));
}

BINCatNumEncoder::BINCatNumEncoder(const std::vector<double>& values) {
  for (const double value : values) {
    Encode(value);
  }
}

BINCatNumEncoder::BINCatNumEncoder(const BINCatNumEncoder& other)
    : IBINEncoder(other),
      codes_(other.codes_),
      values_(other.values_),
      valueLabels_(other.valueLabels_),
      lastCode_(other.lastCode_),
      userMissing_(MCBinning::cloneUserMissing(other.userMissing_.get())) {}

BINCatNumEncoder::~BINCatNumEncoder() = default;

double BINCatNumEncoder::Encode(double value) {
  if (value == MCMV::gMissingValue || MCBinning::isUserMissing(userMissing_.get(), value)) {
    return kMissingCode;
  }
  return addCode(codes_, values_, lastCode_, value, [](const double& key) { return key; });
}

double BINCatNumEncoder::EncodeConst(double value) const {
  return MCBinning::isUserMissing(userMissing_.get(), value) ? kMissingCode
                                                             : knownCode(codes_, value);
}

double BINCatNumEncoder::Decode(int code) const {
  return code < 0 || code >= GetNumberOfCategories() ? MCMV::gMissingValue
                                                     : values_[static_cast<std::size_t>(code)];
}

IBINEncoder::EncoderType BINCatNumEncoder::GetEncoderType() { return CatNumEncoderType; }

int BINCatNumEncoder::GetNumberOfCategories() const { return static_cast<int>(codes_.size()); }

void BINCatNumEncoder::SetValueLabels(const std::vector<std::string>& labels) {
  valueLabels_ = std::vector<std::string>(labels);
}

void BINCatNumEncoder::SetValueLabel(int code, const std::string& label) {
  setLabel(valueLabels_, GetNumberOfCategories(), code, label);
}

const std::vector<std::string>* BINCatNumEncoder::GetValueLabels() const { return &valueLabels_; }

bool BINCatNumEncoder::SetUserMissingInfo(IBINUserMissing* userMissing) {
  return MCBinning::replaceUserMissing(userMissing_, userMissing, IBINUserMissing::NumericData);
}

IBINUserMissing* BINCatNumEncoder::GetUserMissingInfo() const { return userMissing_.get(); }

IBINEncoder* BINCatNumEncoder::Clone() const { return new BINCatNumEncoder(*this); }

void BINCatNumEncoder::Display(std::ostream& os) const {
  os << "\tBINCatNumEncoder: Last code = " << lastCode_ << std::endl;
  os << "\t\tNumeric values of categories: ";
  displayInSevens(os, values_);
  if (!valueLabels_.empty()) {
    os << "\t\tValue Labels:\n";
    displayInSevens(os, valueLabels_);
  }
  MCBinning::displayUserMissing(os, userMissing_.get());
  os << std::endl;
}

BINStringEncoder::BINStringEncoder(int expectedCategories) {
  links_.reserve(reservation(expectedCategories));
}

BINStringEncoder::BINStringEncoder(const std::vector<std::string>& values) {
  for (const std::string& value : values) {
    Encode(value);
  }
}

BINStringEncoder::BINStringEncoder(const BINStringEncoder& other)
    : IBINEncoder(other),
      codes_(other.codes_),
      valueLabels_(other.valueLabels_),
      lastCode_(other.lastCode_),
      userMissing_(MCBinning::cloneUserMissing(other.userMissing_.get())) {
  CreateLinks();
}

BINStringEncoder::~BINStringEncoder() = default;

double BINStringEncoder::Encode(const std::string& value) {
  if (MCBinning::isUserMissing(userMissing_.get(), value)) {
    return kMissingCode;
  }
  return addCode(codes_, links_, lastCode_, value, [](const std::string& key) { return &key; });
}

double BINStringEncoder::EncodeConst(const std::string& value) const {
  return MCBinning::isUserMissing(userMissing_.get(), value) ? kMissingCode
                                                             : knownCode(codes_, value);
}

std::string BINStringEncoder::Decode(int code) {
  return code < 0 || code > lastCode_ ? std::string() : *links_[static_cast<std::size_t>(code)];
}

IBINEncoder::EncoderType BINStringEncoder::GetEncoderType() { return StringEncoderType; }

int BINStringEncoder::GetNumberOfCategories() const { return lastCode_ + 1; }

void BINStringEncoder::SetValueLabels(const std::vector<std::string>& labels) {
  valueLabels_ = std::vector<std::string>(labels);
}

void BINStringEncoder::SetValueLabel(int code, const std::string& label) {
  setLabel(valueLabels_, GetNumberOfCategories(), code, label);
}

const std::vector<std::string>* BINStringEncoder::GetValueLabels() const { return &valueLabels_; }

bool BINStringEncoder::SetUserMissingInfo(IBINUserMissing* userMissing) {
  return MCBinning::replaceUserMissing(userMissing_, userMissing, IBINUserMissing::StringData);
}

IBINUserMissing* BINStringEncoder::GetUserMissingInfo() const { return userMissing_.get(); }

IBINEncoder* BINStringEncoder::Clone() const { return new BINStringEncoder(*this); }

void BINStringEncoder::Display(std::ostream& os) const {
  os << "\tBINStringEncoder object:  Last code = " << lastCode_ << std::endl;
  for (std::size_t code = 0; code < links_.size(); ++code) {
    os << "\t\t" << code << "\t\t";
    if (links_[code] != nullptr) {
      os << *links_[code] << std::endl;
    } else {
      os << "ERROR\n";
    }
  }
  MCBinning::displayUserMissing(os, userMissing_.get());
}

void BINStringEncoder::CreateLinks() {
  links_.assign(codes_.size(), nullptr);
  for (const auto& [value, code] : codes_) {
    links_[static_cast<std::size_t>(code)] = &value;
  }
}
