#include "supervised/bin_algorithm.h"

#include <mccomvor/missing_value.h>

#include <cstddef>
#include <ostream>
#include <utility>

#include "api/make_algorithm.h"
#include "api/version_banner.h"
#include "data/attribute_table.h"
#include "status/status_codes.h"
#include "supervised/candidate_table.h"
#include "supervised/cut_point_search.h"
#include "supervised/pre_bins.h"
#include "supervised/small_bins.h"

namespace MCBinning {
BINAlgorithm::BINAlgorithm(BINSettings& settings, BINVarList& varList, FileSystem& files)
    : settings_(settings),
      varList_(varList),
      cancelState_(settings.GetCancelPointer()),
      data_(varList_, cancelState_, files),
      targetIndex_(varList_.GetTargetIndex()),
      weightIndex_(varList_.GetWeightIndex()) {}

BINAlgorithm::~BINAlgorithm() = default;

std::string BINAlgorithm::GetVersion() { return kVersionBanner; }

MCStatus BINAlgorithm::Run(BINCaseIterator& cases, const std::vector<int>* attributes,
                           const std::vector<int>* targets) {
  try {
    return RunSelection(cases, {attributes, targets});
  } catch (...) {
    preProcess_.reset();
    DiscardData();
    return errorStatus(kFailed);
  }
}

void BINAlgorithm::SetCancelPointer(MCQueryCancel* query) { cancelState_.SetQuery(query); }

void BINAlgorithm::Cancel() { cancelState_.Cancel(); }

void BINAlgorithm::SetProgressListener(ProgressListener* listener) {
  settings_.SetProgressListener(listener);
}

BINOutput* BINAlgorithm::GetOutput() { return &output_; }

MCStatus BINAlgorithm::GetStatus() {
  try {
    if (cancelState_.IsCancelled()) {
      status_ = errorStatus(kCancelled);
    }
  } catch (...) {
    return errorStatus(kFailed);
  }
  return status_;
}

BINSettings* BINAlgorithm::GetSettings() { return &settings_; }

BINVarList* BINAlgorithm::GetVarList() { return &varList_; }

void BINAlgorithm::Display(std::ostream& os) {
  os << std::endl << "Start of BINAlgorithm display" << std::endl;
  os << "Record count: " << recordCount_ << std::endl;
  os << "out result: ";
  data_.Display(os);
  output_.Display(os);
  os << "End of BINAlgorithm display" << std::endl;
}

MCStatus BINAlgorithm::RunSelection(BINCaseIterator& cases, const PairSelection& selection) {
  numberOfBins_ = settings_.GetNumberOfBins();
  if (numberOfBins_ <= 0) {
    return errorStatus(kNoNumberOfBins);
  }
  if (!selection.IsWholeList() &&
      !CheckPairs(selection, varList_, targetIndex_, weightIndex_, pairStatuses_)) {
    return errorStatus(kUnusableSelection);
  }
  MCStatus status;
  if (!cancelState_.IsCancelled()) {
    if (!data_.Exists()) {
      status = Prepare(cases);
      if (status.IsError()) {
        return status;
      }
    }
    status = BinPairs(selection);
  }
  if (!status_.IsOK()) {
    status = warningStatus(kSomeNotOK);
  }
  if (cancelState_.IsCancelled()) {
    DiscardData();  // no later run gets as far as using them
    status_ = errorStatus(kCancelled);
    return status_;
  }
  return status;
}

void BINAlgorithm::DiscardData() {
  pairRows_ = nullptr;
  data_.Discard();
}

MCStatus BINAlgorithm::Prepare(BINCaseIterator& cases) {
  PreparedData::Options options;
  options.tempDirName = settings_.GetTempDirName();
  options.listener = settings_.GetProgressListener();
  options.reportInterval = settings_.GetNSkippedCasesReports();
  distinctValueThreshold_ = settings_.GetNumDistinctValueThreshold();
  const MCStatus status = data_.Prepare(cases, options);
  rightBorderClosed_ = settings_.IsRightBorderClosed();
  return status;
}

MCStatus BINAlgorithm::BinPairs(const PairSelection& selection) {
  preProcess_ = std::make_unique<BINEFPreProcess>(numberOfBins_, rightBorderClosed_);
  AttributeProgress progress(settings_.GetProgressListener(),
                             [this] { return settings_.GetNSkippedAttReports(); });
  const MCStatus status =
      selection.IsWholeList() ? BinWholeList(progress) : BinSelectedPairs(selection, progress);
  preProcess_.reset();
  return status;
}

MCStatus BINAlgorithm::BinSelectedPairs(const PairSelection& selection,
                                        AttributeProgress& progress) {
  MCStatus status;
  for (std::size_t i = 0; i < pairStatuses_.size() && !cancelState_.IsCancelled(); ++i) {
    const int attribute = (*selection.attributes)[i];
    const int target = selection.targets != nullptr ? (*selection.targets)[i] : targetIndex_;
    if (pairStatuses_[i].IsOK()) {
      status = BinPair(attribute, target);
      progress.AttributeDone(attribute, status);
    } else {
      BINAttributeTargetResults refused = NewRecord(attribute, target);
      refused.status_ = pairStatuses_[i];
      File(std::move(refused));
    }
  }
  return status;
}

MCStatus BINAlgorithm::BinWholeList(AttributeProgress& progress) {
  MCStatus status = data_.Table().CheckTarget(targetIndex_);
  if (status.IsError()) {
    return status;
  }
  const int size = static_cast<int>(varList_.Size());
  for (int attribute = 0; attribute < size; ++attribute) {
    if (attribute == targetIndex_ || attribute == weightIndex_) {
      continue;
    }
    if (cancelState_.IsCancelled()) {
      break;
    }
    status = BinPair(attribute, targetIndex_);
    progress.AttributeDone(attribute, status);
  }
  return status;
}

BINAttributeTargetResults BINAlgorithm::NewRecord(int attribute, int target) const {
  BINAttributeTargetResults record;
  record.attributeIndex_ = attribute;
  record.targetIndex_ = target;
  record.cellCounts_ = Bins().Rows();
  return record;
}

MCStatus BINAlgorithm::BinPair(int attribute, int target) {
  BINAttributeTargetResults record = NewRecord(attribute, target);
  Compute(record);
  const MCStatus status = record.status_;
  File(std::move(record));
  return status;
}

void BINAlgorithm::Compute(BINAttributeTargetResults& record) {
  BINAttributeTable& table = data_.Table();
  record.status_ =
      table.BuildSupervisedTable(record.attributeIndex_, record.targetIndex_, pairRows_);
  recordCount_ = table.GetNRows();
  record.nDistinctValues_ = table.GetNDistinctValues();
  record.totalWeight_ = table.GetTotalWeight();
  record.totalWeightWithMissing_ = table.GetTotalWeightWithMissing();
  record.minimum_ = table.GetMinimum();
  record.maximum_ = table.GetMaximum();
  record.modelEntropy_ = MCMV::gMissingValue;
  if (pairRows_ == nullptr) {
    return;
  }
  if (recordCount_ == 0) {
    record.status_ = warningStatus(kNoValidCases);
    return;
  }
  targetCategoryCount_ = static_cast<int>(table.GetNTargetCategories());
  Bins bins;
  record.status_ = arePreBinsNeeded(distinctValueThreshold_, record.nDistinctValues_)
                       ? FindBinsOfPreBins(bins)
                       : FindBins(bins);
  if (bins.Size() > 0) {
    MergeSmallBins(settings_.GetSmallBinDetectionThreshold(), bins);
    record.modelEntropy_ = ModelEntropy(bins, record.totalWeight_);
  }
  record.cellCounts_ = bins.Rows();
  record.cutPoints_ = std::move(bins.cutPoints);
  if (record.nDistinctValues_ == 1) {
    record.status_ = about(warningStatus(kSingleValue), record.attributeIndex_);
  }
  if (targetCategoryCount_ == 1) {
    record.status_ = about(warningStatus(kSingleCategory), record.targetIndex_);
  }
}

MCStatus BINAlgorithm::FindBins(Bins& bins) {
  return SearchCutPoints(
      CandidateTable::FromRows(*pairRows_, static_cast<std::size_t>(targetCategoryCount_),
                               rightBorderClosed_),
      bins);
}

/// Without bins when there is nothing to search in.
MCStatus BINAlgorithm::FindBinsOfPreBins(Bins& bins) {
  std::vector<double> boundaries;
  if (!FindPreBins(*preProcess_, *pairRows_, data_.Table().GetTotalWeight(), rightBorderClosed_,
                   boundaries)) {
    return {};
  }
  const auto nCategories = static_cast<std::size_t>(targetCategoryCount_);
  std::vector<double> counts;
  const MCStatus countStatus =
      CountPerBin(*pairRows_, nCategories, boundaries, rightBorderClosed_, counts);
  const MCStatus searchStatus =
      SearchCutPoints(CandidateTable::FromPreBins(boundaries, counts, nCategories), bins);
  return searchStatus.IsOK() ? countStatus : searchStatus;
}

void BINAlgorithm::File(BINAttributeTargetResults record) {
  const MCStatus status = record.status_;
  output_.File(std::move(record));
  if (!status.IsOK()) {
    status_ = status;
  }
}

std::unique_ptr<IBINAlgorithm> MakeBINAlgorithm(BINSettings& settings, BINVarList& varList) {
  return std::make_unique<BINAlgorithm>(settings, varList);
}

}  // namespace MCBinning
