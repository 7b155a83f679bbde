#include "rounds/rounds_run.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "rounds/answer.h"
#include "status/status_codes.h"

namespace MCBinning {
namespace {

constexpr int kWholeCases = -1;  // the datum of a status that is about no attribute

bool isSame(const BINRoundAnswer& left, const BINRoundAnswer& right) {
  return left.cases == right.cases && left.classWeights == right.classWeights &&
         left.missingTargetWeight == right.missingTargetWeight;
}

}  // namespace

RoundsRun::RoundsRun(const RoundSettings& settings, const BINRoundsPlan& plan)
    : settings_(settings),
      nCategories_(settings.isEqualFrequency ? 1 : static_cast<std::size_t>(plan.categories)) {
  settings_.target = plan.target;
  settings_.countDistinct = plan.countDistinct;
  totals_.limits.mostFetched = plan.mostFetched;
  totals_.limits.mostBorders = static_cast<std::size_t>(plan.mostBorders);
  for (const BINRoundsAttribute& attribute : plan.attributes) {
    attributes_.emplace_back(settings_, attribute.index);
  }
}

bool RoundsRun::IsFinished() const {
  return std::all_of(attributes_.begin(), attributes_.end(),
                     [](const AttributeRun& attribute) { return attribute.IsFinished(); });
}

MCStatus RoundsRun::Take(const BINRoundAnswer& answer, BINRoundQuestion& question) {
  if (answer.attributes.size() != question.attributes.size()) {
    return about(errorStatus(kUnfitAnswer), kWholeCases);
  }
  MCStatus status = TakeCases(answer);
  for (std::size_t i = 0; i < question.attributes.size() && status.IsOK(); ++i) {
    status = TakeAttribute(question.attributes[i], answer.attributes[i]);
  }
  if (!status.IsOK()) {
    return status;
  }
  ++progress_.rounds;
  question.attributes.clear();
  for (std::size_t i = 0; i < attributes_.size(); ++i) {
    if (!attributes_[i].IsFinished()) {
      BINAttributeQuestion next;
      next.attribute = i;
      attributes_[i].Ask(next);
      question.attributes.push_back(std::move(next));
    }
  }
  return {};
}

MCStatus RoundsRun::TakeCases(const BINRoundAnswer& answer) {
  const double weight = std::accumulate(answer.classWeights.begin(), answer.classWeights.end(),
                                        answer.missingTargetWeight);
  if (weight >= 0x1p53) {
    return about(errorStatus(kTooMuchWeight), kWholeCases);
  }
  if (answer.classWeights.size() != nCategories_ || !isWholeWeight(answer.missingTargetWeight) ||
      !std::all_of(answer.classWeights.begin(), answer.classWeights.end(), isWholeWeight) ||
      !isWholeWeight(answer.cases) || answer.cases > weight ||
      (answer.cases == 0.0 && weight > 0.0)) {
    return about(errorStatus(kUnfitAnswer), kWholeCases);
  }
  if (cases_) {
    return isSame(*cases_, answer) ? MCStatus() : about(errorStatus(kDataChanged), kWholeCases);
  }
  if (weight == 0.0) {
    return errorStatus(kNoCases);
  }
  totals_.weight = weight;
  TakeFirstCases(answer);
  return {};
}

void RoundsRun::TakeFirstCases(const BINRoundAnswer& answer) {
  cases_.emplace();
  cases_->cases = answer.cases;
  cases_->classWeights = answer.classWeights;
  cases_->missingTargetWeight = answer.missingTargetWeight;
  for (std::size_t code = 0; code < nCategories_; ++code) {
    if (answer.classWeights[code] > 0.0) {
      totals_.nCategories = code + 1;
    }
  }
  totals_.limits.weightPerCase = totals_.weight / answer.cases;
  totals_.limits.mostFetched *= totals_.limits.weightPerCase;
}

MCStatus RoundsRun::TakeAttribute(const BINAttributeQuestion& question,
                                  const BINAttributeAnswer& answer) {
  AttributeRun& attribute = attributes_[question.attribute];
  const auto read = AttributeAnswer::Read(question, answer, nCategories_);
  if (!read) {
    return about(errorStatus(kUnfitAnswer), attribute.Attribute());
  }
  progress_.weightsReceived += static_cast<double>(answer.cellWeights.size());
  progress_.valuesReceived += static_cast<double>(answer.values.size());
  if (!read->AddsUpTo(cases_->classWeights) || !attribute.Take(*read, totals_)) {
    return about(errorStatus(kDataChanged), attribute.Attribute());
  }
  return {};
}

MCStatus RoundsRun::File(BINOutput& output, EFBINOutput& efOutput) const {
  MCStatus status;
  for (const AttributeRun& attribute : attributes_) {
    const MCStatus ofRecord = settings_.isEqualFrequency ? attribute.File(totals_, efOutput)
                                                         : attribute.File(totals_, output);
    if (!ofRecord.IsOK()) {
      status = warningStatus(kSomeNotOK);
    }
  }
  return status;
}

BINRoundsProgress RoundsRun::Progress() const {
  BINRoundsProgress progress = progress_;
  for (const AttributeRun& attribute : attributes_) {
    progress.attributesLeft += attribute.IsFinished() ? 0 : 1;
    progress.weightLeft += attribute.WishedWeight();
  }
  return progress;
}

}  // namespace MCBinning
