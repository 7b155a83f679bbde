#include "mcbinning/rounds.h"
#include "rounds/question_cells.h"
#include "status/status_codes.h"

using MCBinning::errorStatus;
using MCBinning::MCStatus;
using MCBinning::QuestionCells;

BINRoundCounter::BINRoundCounter() = default;

BINRoundCounter::~BINRoundCounter() = default;

MCStatus BINRoundCounter::Prepare(const BINRoundQuestion& question, int categories) {
  cells_.reset();
  if (categories < 1 || categories > 256) {
    return errorStatus(MCBinning::kUnusableTarget);
  }
  try {
    if (!MCBinning::doesAscend(question)) {
      return errorStatus(MCBinning::kUnfitAnswer);
    }
    cells_ = std::make_unique<QuestionCells>(question, static_cast<std::size_t>(categories));
  } catch (...) {
    return errorStatus(MCBinning::kFailed);
  }
  return {};
}

MCStatus BINRoundCounter::Count(const BINRoundCases& cases, BINRoundAnswer& answer) const {
  if (cells_ == nullptr) {
    return errorStatus(MCBinning::kUnfitAnswer);
  }
  try {
    return cells_->Count(cases, answer);
  } catch (...) {
    return errorStatus(MCBinning::kFailed);
  }
}

MCStatus BINRoundCounter::Add(const BINRoundAnswer& part, BINRoundAnswer& answer) {
  try {
    if (answer.classWeights.empty() && answer.attributes.empty()) {
      answer = part;
      return {};
    }
    return MCBinning::addAnswer(part, answer) ? MCStatus() : errorStatus(MCBinning::kUnfitAnswer);
  } catch (...) {
    return errorStatus(MCBinning::kFailed);
  }
}
