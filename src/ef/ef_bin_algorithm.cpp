#include "ef/ef_bin_algorithm.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <utility>

#include "api/make_algorithm.h"
#include "api/version_banner.h"
#include "data/attribute_table.h"
#include "data/sorted_rows.h"
#include "status/attribute_progress.h"
#include "status/status_codes.h"
#include "supervised/ef_preprocess.h"

namespace MCBinning {
std::unique_ptr<IEFBINAlgorithm> MakeEFBINAlgorithm(EFBINSettings& settings, BINVarList& varList) {
  return std::make_unique<EFBINAlgorithm>(settings, varList);
}

EFBINAlgorithm::EFBINAlgorithm(EFBINSettings& settings, BINVarList& varList, FileSystem& files)
    : settings_(settings),
      varList_(varList),
      cancelState_(settings_.GetCancelPointer()),
      data_(varList_, cancelState_, files),
      weightIndex_(varList_.GetWeightIndex()) {}

EFBINAlgorithm::~EFBINAlgorithm() = default;

std::string EFBINAlgorithm::GetVersion() { return kVersionBanner; }

MCStatus EFBINAlgorithm::Run(BINCaseIterator& cases, const std::vector<int>* attributes) {
  try {
    return RunUnguarded(cases, attributes);
  } catch (...) {
    data_.Discard();
    return errorStatus(kFailed);
  }
}

MCStatus EFBINAlgorithm::RunUnguarded(BINCaseIterator& cases, const std::vector<int>* attributes) {
  numberOfBins_ = settings_.GetNumberOfBins();
  if (numberOfBins_ <= 0) {
    return errorStatus(kNoNumberOfBins);
  }
  std::vector<MCStatus> attributeStatuses;
  if (attributes != nullptr) {
    attributeStatuses = ValidateSelection(*attributes);
    if (std::none_of(attributeStatuses.begin(), attributeStatuses.end(),
                     [](const MCStatus& attributeStatus) { return attributeStatus.IsOK(); })) {
      return errorStatus(kAttributeOutOfRange);
    }
  }
  MCStatus status;
  if (!cancelState_.IsCancelled()) {
    status = PrepareOnce(cases);
    if (status.IsError()) {
      return status;
    }
    if (attributes != nullptr) {
      BinSelection(*attributes, attributeStatuses);
    } else {
      BinWholeList();
    }
  }
  if (!status_.IsOK()) {
    status = warningStatus(kSomeNotOK);
  }
  if (cancelState_.IsCancelled()) {
    data_.Discard();  // no later run gets as far as using them
    status_ = errorStatus(kCancelled);
    return status_;
  }
  return status;
}

std::vector<MCStatus> EFBINAlgorithm::ValidateSelection(const std::vector<int>& attributes) const {
  std::vector<MCStatus> statuses;
  statuses.reserve(attributes.size());
  for (const int attribute : attributes) {
    if (attribute < 0 || static_cast<std::uint64_t>(attribute) >= varList_.Size()) {
      statuses.push_back(errorStatus(kAttributeOutOfRange));
    } else if (attribute == weightIndex_) {
      statuses.push_back(errorStatus(kSameOrWeightVariable));
    } else {
      statuses.emplace_back();
    }
  }
  return statuses;
}

MCStatus EFBINAlgorithm::PrepareOnce(BINCaseIterator& cases) {
  if (data_.Exists()) {
    return {};
  }
  PreparedData::Options options;
  options.tempDirName = settings_.GetTempDirName();
  options.listener = settings_.GetProgressListener();
  options.reportInterval = settings_.GetNSkippedCasesReports();
  const MCStatus status = data_.Prepare(cases, options);
  rightBorderClosed_ = settings_.IsRightBorderClosed();
  return status;
}

void EFBINAlgorithm::BinWholeList() {
  AttributeProgress progress(settings_.GetProgressListener(),
                             [this] { return settings_.GetNSkippedAttReports(); });
  const int size = static_cast<int>(varList_.Size());
  for (int attribute = 0; attribute < size && !cancelState_.WasCancelled(); ++attribute) {
    if (attribute != weightIndex_) {
      progress.AttributeDone(attribute, BinAttribute(attribute));
    }
  }
}

void EFBINAlgorithm::BinSelection(const std::vector<int>& attributes,
                                  const std::vector<MCStatus>& attributeStatuses) {
  AttributeProgress progress(settings_.GetProgressListener(),
                             [this] { return settings_.GetNSkippedAttReports(); });
  for (std::size_t i = 0; i < attributes.size() && !cancelState_.WasCancelled(); ++i) {
    if (attributeStatuses[i].IsOK()) {
      progress.AttributeDone(attributes[i], BinAttribute(attributes[i]));
    } else {
      BINAttributeResults refused;
      refused.attributeIndex_ = attributes[i];
      refused.status_ = attributeStatuses[i];
      File(std::move(refused));
    }
  }
}

MCStatus EFBINAlgorithm::BinAttribute(int attribute) {
  MCStatus status;
  if (!cancelState_.IsCancelled()) {
    BINAttributeResults record;
    record.attributeIndex_ = attribute;
    Compute(record);
    status = record.status_;
    File(std::move(record));
  }
  if (cancelState_.IsCancelled()) {
    status_ = errorStatus(kCancelled);
    return status_;
  }
  return status;
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

void EFBINAlgorithm::File(BINAttributeResults record) {
  const MCStatus status = record.status_;
  output_.File(std::move(record));
  if (!status.IsOK()) {
    status_ = status;
  }
}

void EFBINAlgorithm::SetCancelPointer(MCQueryCancel* query) { cancelState_.SetQuery(query); }

void EFBINAlgorithm::Cancel() { cancelState_.Cancel(); }

void EFBINAlgorithm::SetProgressListener(ProgressListener* listener) {
  settings_.SetProgressListener(listener);
}

EFBINOutput* EFBINAlgorithm::GetOutput() { return &output_; }

MCStatus EFBINAlgorithm::GetStatus() { return status_; }

EFBINSettings* EFBINAlgorithm::GetSettings() { return &settings_; }

void EFBINAlgorithm::Display(std::ostream& os) {
  os << std::endl;
  os << "Start of EFBINAlgorithm display" << std::endl;
  os << "Record count: " << recordCount_ << std::endl;
  os << "out result: ";
  data_.Display(os);
  output_.Display(os);
  os << "End of EFBINAlgorithm display" << std::endl;
}

BINVarList* EFBINAlgorithm::GetVarList() { return &varList_; }

}  // namespace MCBinning
