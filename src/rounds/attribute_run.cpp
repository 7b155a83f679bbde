#include "rounds/attribute_run.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "status/status_codes.h"
#include "supervised/bin_algorithm.h"
#include "supervised/ef_preprocess.h"
#include "supervised/pre_bins.h"
#include "supervised/small_bins.h"

namespace MCBinning {
namespace {

/// Whether the pieces can hold these extremes, which are two infinities when there are no values.
bool canHold(const PieceTable& pieces, double minimum, double maximum) {
  if (pieces.Size() == 0) {
    return minimum > maximum;
  }
  const auto holds = [](const Piece& piece, double value) {
    return piece.IsStretch() ? piece.low < value && value < piece.high : piece.low == value;
  };
  return minimum <= maximum && holds(pieces[0], minimum) &&
         holds(pieces[pieces.Size() - 1], maximum);
}

}  // namespace

AttributeRun::AttributeRun(const RoundSettings& settings, int attribute)
    : settings_(settings),
      attribute_(attribute),
      minimum_(MCMV::gMissingValue),
      maximum_(MCMV::gMissingValue) {}

const PieceSearch* AttributeRun::Search() const {
  if (intervals_) {
    return &*intervals_;
  }
  return targets_ ? &*targets_ : nullptr;
}

bool AttributeRun::Take(const AttributeAnswer& answer, const RoundTotals& totals) {
  bool agrees = false;
  if (!isStarted_) {
    agrees = TakeFirst(answer, totals);
    isStarted_ = true;
  } else {
    agrees = answer.Minimum() == minimum_ && answer.Maximum() == maximum_ &&
             (intervals_ ? intervals_->GoOn(answer) : targets_->GoOn(answer));
  }
  if (agrees && Search() != nullptr && Search()->IsFinished()) {
    Finish(totals);
  }
  return agrees;
}

bool AttributeRun::TakeFirst(const AttributeAnswer& answer, const RoundTotals& totals) {
  PieceTable pieces = answer.AllPieces();
  if (!canHold(pieces, answer.Minimum(), answer.Maximum())) {
    return false;
  }
  const ClassCounts counts = pieces.Count(totals.nCategories);
  weight_ = counts[0];
  distinctValues_ = settings_.countDistinct ? answer.DistinctValues() : 0.0;
  if (pieces.Size() == 0) {
    status_ = warningStatus(kNoValidCases);
    return true;
  }
  minimum_ = answer.Minimum();
  maximum_ = answer.Maximum();
  pieces.Tighten(minimum_, maximum_);
  if (settings_.isEqualFrequency ||
      arePreBinsNeeded(settings_.distinctValueThreshold, DistinctValues())) {
    targets_.emplace(pieces, settings_.numberOfBins, totals.limits);
  } else {
    intervals_.emplace(pieces, totals.nCategories, settings_.rightBorderClosed, totals.limits);
  }
  return true;
}

void AttributeRun::Finish(const RoundTotals& totals) {
  if (settings_.isEqualFrequency) {
    FinishEqualFrequency();
  } else {
    FinishPair(totals);
  }
  if (minimum_ == maximum_) {
    status_ = about(warningStatus(kSingleValue), attribute_);
  }
  if (!settings_.isEqualFrequency && totals.nCategories == 1) {
    status_ = about(warningStatus(kSingleCategory), settings_.target);
  }
  intervals_.reset();
  targets_.reset();
}

void AttributeRun::FinishPair(const RoundTotals& totals) {
  if (intervals_) {
    bins_ = intervals_->TakeBins();
    status_ = bins_.cutPoints.empty() ? warningStatus(kNoSplit) : MCStatus();
  } else {
    const SortedRows rows(targets_->Pieces().Rows());
    status_ = searchPreBins(rows, totals.nCategories, weight_, settings_.numberOfBins,
                            settings_.rightBorderClosed, bins_);
  }
  mergeSmallBins(settings_.smallBinThreshold, bins_);
}

void AttributeRun::FinishEqualFrequency() {
  const SortedRows rows(targets_->Pieces().Rows());
  BINEFPreProcess(settings_.numberOfBins, settings_.rightBorderClosed)
      .RunOverPairs(rows, bins_.cutPoints, bins_.counts, weight_);
  if (bins_.cutPoints.empty()) {
    status_ = about(warningStatus(kNoEqualFrequencyCut), attribute_);
  }
}

std::uint32_t AttributeRun::DistinctValues() const {
  constexpr double kMost = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(distinctValues_, kMost));
}

template <typename Record>
void AttributeRun::FillRecord(const RoundTotals& totals, Record& record) const {
  record.status_ = status_;
  record.attributeIndex_ = attribute_;
  record.nDistinctValues_ = DistinctValues();
  record.totalWeight_ = weight_;
  record.totalWeightWithMissing_ = totals.weight;
  record.minimum_ = minimum_;
  record.maximum_ = maximum_;
}

MCStatus AttributeRun::File(const RoundTotals& totals, BINOutput& output) const {
  BINAttributeTargetResults record;
  FillRecord(totals, record);
  record.targetIndex_ = settings_.target;
  BINAlgorithm::FillBins(bins_, record);
  output.File(std::move(record));
  return status_;
}

MCStatus AttributeRun::File(const RoundTotals& totals, EFBINOutput& output) const {
  BINAttributeResults record;
  FillRecord(totals, record);
  record.cutPoints_ = bins_.cutPoints;
  record.cellCounts_ = bins_.counts;
  output.File(std::move(record));
  return status_;
}

}  // namespace MCBinning
