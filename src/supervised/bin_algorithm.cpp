#include "supervised/bin_algorithm.h"

#include <mccomvor/missing_value.h>

#include <memory>
#include <utility>

#include "api/make_algorithm.h"
#include "data/attribute_table.h"
#include "status/status_codes.h"
#include "supervised/candidate_table.h"
#include "supervised/cut_point_search.h"
#include "supervised/ef_preprocess.h"
#include "supervised/pre_bins.h"
#include "supervised/small_bins.h"

namespace MCBinning {

BINAlgorithm::BINAlgorithm(BINSettings& settings, BINVarList& varList, FileSystem& files)
    : AlgorithmFrame(settings, varList, varList.GetTargetIndex(), files) {}

BINAlgorithm::~BINAlgorithm() = default;

MCStatus BINAlgorithm::Run(BINCaseIterator& cases, const std::vector<int>* attributes,
                           const std::vector<int>* targets) {
  if (!data_.Exists()) {
    distinctValueThreshold_ = settings_.GetNumDistinctValueThreshold();
  }
  return RunSelection(cases, {attributes, targets});
}

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

MCStatus BINAlgorithm::Select(const Selection& selection, std::vector<Request>& requests) const {
  return requestPairs(selection, varList_, targetIndex_, weightIndex_, requests)
             ? MCStatus()
             : errorStatus(kUnusableSelection);
}

/// A column that the pass gave up shows in the records that ask for it.
MCStatus BINAlgorithm::CheckData(const Selection& selection, const MCStatus& /*ofPass*/) {
  return selection.IsWholeList() ? data_.Table().CheckTarget(targetIndex_) : MCStatus();
}

BINAttributeTargetResults BINAlgorithm::NewRecord(const Request& request) const {
  BINAttributeTargetResults record;
  record.status_ = request.status;
  record.attributeIndex_ = request.attribute;
  record.targetIndex_ = request.target;
  record.cellCounts_ = Bins().Rows();
  return record;
}

void BINAlgorithm::Compute(BINAttributeTargetResults& record) {
  BINAttributeTable& table = data_.Table();
  SortedRows* rows = nullptr;
  record.status_ = table.BuildSupervisedTable(record.attributeIndex_, record.targetIndex_, rows);
  recordCount_ = table.GetNRows();
  record.nDistinctValues_ = table.GetNDistinctValues();
  record.totalWeight_ = table.GetTotalWeight();
  record.totalWeightWithMissing_ = table.GetTotalWeightWithMissing();
  record.minimum_ = table.GetMinimum();
  record.maximum_ = table.GetMaximum();
  record.modelEntropy_ = MCMV::gMissingValue;
  if (rows == nullptr) {
    return;
  }
  if (recordCount_ == 0) {
    record.status_ = warningStatus(kNoValidCases);
    return;
  }
  const std::size_t nCategories = table.GetNTargetCategories();
  Bins bins;
  record.status_ = arePreBinsNeeded(distinctValueThreshold_, record.nDistinctValues_)
                       ? searchPreBins(*rows, nCategories, record.totalWeight_, numberOfBins_,
                                       rightBorderClosed_, bins)
                       : FindBins(*rows, nCategories, bins);
  mergeSmallBins(settings_.GetSmallBinDetectionThreshold(), bins);
  FillBins(std::move(bins), record);
  if (record.nDistinctValues_ == 1) {
    record.status_ = about(warningStatus(kSingleValue), record.attributeIndex_);
  }
  if (nCategories == 1) {
    record.status_ = about(warningStatus(kSingleCategory), record.targetIndex_);
  }
}

void BINAlgorithm::FillBins(Bins bins, BINAttributeTargetResults& record) {
  record.modelEntropy_ =
      bins.Size() > 0 ? modelEntropy(bins, record.totalWeight_) : MCMV::gMissingValue;
  record.cellCounts_ = bins.Rows();
  record.cutPoints_ = std::move(bins.cutPoints);
}

MCStatus BINAlgorithm::FindBins(SortedRows& rows, std::size_t nCategories, Bins& bins) const {
  return searchCutPoints(CandidateTable::FromRows(rows, nCategories, rightBorderClosed_), bins);
}

void BINAlgorithm::FileInOutput(BINAttributeTargetResults record) {
  output_.File(std::move(record));
}

std::unique_ptr<IBINAlgorithm> makeBINAlgorithm(BINSettings& settings, BINVarList& varList) {
  return std::make_unique<BINAlgorithm>(settings, varList);
}

}  // namespace MCBinning
