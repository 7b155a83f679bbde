#include <mccomvor/missing_value.h>

#include <cmath>
#include <ostream>

#include "mcbinning/encoders.h"
#include "model/held_user_missing.h"

BINRoundEncoder::BINRoundEncoder() = default;

BINRoundEncoder::BINRoundEncoder(IBINVariable::BINWRoundingOption option) : option_(option) {}

BINRoundEncoder::BINRoundEncoder(const BINRoundEncoder& other) = default;

BINRoundEncoder& BINRoundEncoder::operator=(const BINRoundEncoder& other) = default;

BINRoundEncoder::~BINRoundEncoder() = default;

double BINRoundEncoder::Encode(double weight) const {
  if (weight == MCMV::gMissingValue || !std::isfinite(weight) ||
      MCBinning::isUserMissing(userMissing_, weight)) {
    return MCMV::gMissingValue;
  }
  double count = weight;
  if (option_ == IBINVariable::TruncateToSmallerInt) {
    count = std::floor(weight);
  } else if (option_ == IBINVariable::RoundToClosestInt) {
    count = std::floor(weight + 0.5);
  }
  return count <= 0.0 ? MCMV::gMissingValue : count;
}

IBINEncoder::EncoderType BINRoundEncoder::GetEncoderType() { return RoundEncoderType; }

int BINRoundEncoder::GetNumberOfCategories() const { return 0; }

void BINRoundEncoder::SetValueLabels(const std::vector<std::string>& /*labels*/) {}

void BINRoundEncoder::SetValueLabel(int /*code*/, const std::string& /*label*/) {}

const std::vector<std::string>* BINRoundEncoder::GetValueLabels() const { return nullptr; }

bool BINRoundEncoder::SetUserMissingInfo(IBINUserMissing* userMissing) {
  if (userMissing != nullptr && userMissing->GetDataType() != IBINUserMissing::NumericData) {
    return false;
  }
  userMissing_ = userMissing;
  return true;
}

IBINUserMissing* BINRoundEncoder::GetUserMissingInfo() const { return userMissing_; }

IBINEncoder* BINRoundEncoder::Clone() const { return new BINRoundEncoder(*this); }

void BINRoundEncoder::Display(std::ostream& os) const {
  os << "\tBINRoundEncoder: option = ";
  IBINVariable::WriteRoundingOptionText(os, option_);
  MCBinning::displayUserMissing(os, userMissing_);
  os << std::endl;
}
