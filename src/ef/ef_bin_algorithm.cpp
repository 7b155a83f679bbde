#include "ef/ef_bin_algorithm.h"

#include <memory>
#include <utility>

#include "api/make_algorithm.h"
#include "data/attribute_table.h"
#include "data/sorted_rows.h"
#include "status/status_codes.h"
#include "supervised/ef_preprocess.h"

namespace MCBinning {

EFBINAlgorithm::EFBINAlgorithm(EFBINSettings& settings, BINVarList& varList, FileSystem& files)
    : AlgorithmFrame(settings, varList, kNoTarget, files) {}

EFBINAlgorithm::~EFBINAlgorithm() = default;

MCStatus EFBINAlgorithm::Run(BINCaseIterator& cases, const std::vector<int>* attributes) {
  return RunSelection(cases, {attributes, nullptr});
}

MCStatus EFBINAlgorithm::GetStatus() { return status_; }

MCStatus EFBINAlgorithm::Select(const Selection& selection, std::vector<Request>& requests) const {
  return requestAttributes(*selection.attributes, varList_, weightIndex_, requests)
             ? MCStatus()
             : errorStatus(kAttributeOutOfRange);
}

MCStatus EFBINAlgorithm::CheckData(const Selection& /*selection*/, const MCStatus& ofPass) {
  return ofPass;
}

BINAttributeResults EFBINAlgorithm::NewRecord(const Request& request) {
  BINAttributeResults record;
  record.status_ = request.status;
  record.attributeIndex_ = request.attribute;
  return record;
}

void EFBINAlgorithm::Compute(BINAttributeResults& record) {
  BINAttributeTable& table = data_.Table();
  SortedRows* rows = nullptr;
  record.status_ = table.BuildUnsupervisedTable(record.attributeIndex_, rows);
  record.nDistinctValues_ = table.GetNDistinctValues();
  record.totalWeight_ = table.GetTotalWeight();
  record.totalWeightWithMissing_ = table.GetTotalWeightWithMissing();
  record.minimum_ = table.GetMinimum();
  record.maximum_ = table.GetMaximum();
  if (rows == nullptr) {
    return;
  }
  recordCount_ = table.GetNRows();
  if (recordCount_ == 0) {
    record.status_ = warningStatus(kNoValidCases);
    return;
  }
  BINEFPreProcess(numberOfBins_, rightBorderClosed_)
      .RunOverPairs(*rows, record.cutPoints_, record.cellCounts_, record.totalWeight_);
  if (record.cutPoints_.empty()) {
    record.status_ = about(warningStatus(kNoEqualFrequencyCut), record.attributeIndex_);
  }
  if (record.nDistinctValues_ == 1) {
    record.status_ = about(warningStatus(kSingleValue), record.attributeIndex_);
  }
}

void EFBINAlgorithm::FileInOutput(BINAttributeResults record) { output_.File(std::move(record)); }

std::unique_ptr<IEFBINAlgorithm> makeEFBINAlgorithm(EFBINSettings& settings, BINVarList& varList) {
  return std::make_unique<EFBINAlgorithm>(settings, varList);
}

}  // namespace MCBinning
