#include "mcbinning/rounds.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "rounds/attribute_run.h"
#include "rounds/question.h"
#include "rounds/rounds_run.h"
#include "status/status_codes.h"

using MCBinning::errorStatus;
using MCBinning::MCStatus;
using MCBinning::RoundSettings;
using MCBinning::RoundsRun;

namespace {

constexpr int kMostCategories = 256;

RoundSettings read(const BINSettings& settings) {
  RoundSettings read;
  read.rightBorderClosed = settings.IsRightBorderClosed();
  read.numberOfBins = settings.GetNumberOfBins();
  read.distinctValueThreshold = settings.GetNumDistinctValueThreshold();
  read.smallBinThreshold = settings.GetSmallBinDetectionThreshold();
  return read;
}

RoundSettings read(const EFBINSettings& settings) {
  RoundSettings read;
  read.isEqualFrequency = true;
  read.rightBorderClosed = settings.IsRightBorderClosed();
  read.numberOfBins = settings.GetNumberOfBins();
  return read;
}

bool isUsable(const BINRoundsPlan& plan, const RoundSettings& settings) {
  std::set<int> seen;
  if (!settings.isEqualFrequency) {
    seen.insert(plan.target);
  }
  const auto isNew = [&](const BINRoundsAttribute& attribute) {
    return attribute.index >= 0 && seen.insert(attribute.index).second &&
           std::none_of(attribute.firstBorders.begin(), attribute.firstBorders.end(),
                        [](double border) { return std::isnan(border); });
  };
  return !plan.attributes.empty() && (settings.isEqualFrequency || plan.target >= 0) &&
         plan.mostFetched > 0.0 && plan.mostBorders >= 1 &&
         std::all_of(plan.attributes.begin(), plan.attributes.end(), isNew);
}

MCStatus check(const RoundSettings& settings, const BINRoundsPlan& plan) {
  if (settings.numberOfBins <= 0) {
    return errorStatus(MCBinning::kNoNumberOfBins);
  }
  if (!isUsable(plan, settings)) {
    return errorStatus(MCBinning::kUnusableSelection);
  }
  if (!settings.isEqualFrequency && (plan.categories < 1 || plan.categories > kMostCategories)) {
    return errorStatus(MCBinning::kUnusableTarget);
  }
  return {};
}

BINRoundQuestion firstQuestion(const BINRoundsPlan& plan) {
  BINRoundQuestion question;
  for (const BINRoundsAttribute& attribute : plan.attributes) {
    BINAttributeQuestion asked;
    asked.attribute = question.attributes.size();
    asked.countDistinct = plan.countDistinct;
    MCBinning::askFirst(attribute.firstBorders, asked);
    question.attributes.push_back(std::move(asked));
  }
  return question;
}

/// Makes the run and its first question, or neither.
MCStatus begin(const RoundSettings& settings, const BINRoundsPlan& plan,
               std::unique_ptr<RoundsRun>& run, BINRoundQuestion& question) {
  try {
    const MCStatus status = check(settings, plan);
    if (status.IsOK()) {
      BINRoundQuestion first = firstQuestion(plan);
      run = std::make_unique<RoundsRun>(settings, plan);
      question = std::move(first);
    }
    return status;
  } catch (...) {
    return errorStatus(MCBinning::kFailed);
  }
}

}  // namespace

BINRounds::BINRounds() = default;

BINRounds::~BINRounds() = default;

MCStatus BINRounds::Start(const BINSettings& settings, const BINRoundsPlan& plan) {
  Clear();
  return begin(read(settings), plan, run_, question_);
}

MCStatus BINRounds::Start(const EFBINSettings& settings, const BINRoundsPlan& plan) {
  Clear();
  return begin(read(settings), plan, run_, question_);
}

bool BINRounds::IsFinished() const { return run_ != nullptr && run_->IsFinished(); }

const BINRoundQuestion& BINRounds::GetQuestion() const { return question_; }

MCStatus BINRounds::Answer(const BINRoundAnswer& answer) {
  if (question_.attributes.empty()) {
    return errorStatus(MCBinning::kUnusableSelection);
  }
  MCStatus status;
  try {
    status = run_->Take(answer, question_);
    if (status.IsOK() && run_->IsFinished()) {
      status = run_->File(output_, efOutput_);
    }
  } catch (...) {
    status = errorStatus(MCBinning::kFailed);
  }
  if (status.IsError()) {
    Clear();
  }
  return status;
}

const BINOutput& BINRounds::GetOutput() const { return output_; }

const EFBINOutput& BINRounds::GetEFOutput() const { return efOutput_; }

BINRoundsProgress BINRounds::GetProgress() const {
  return run_ != nullptr ? run_->Progress() : BINRoundsProgress();
}

void BINRounds::Clear() {
  run_.reset();
  question_.attributes.clear();
  output_ = BINOutput();
  efOutput_ = EFBINOutput();
}
