#include "properties/binning.h"

#include <gtest/gtest.h>

#include "random/run_comparison.h"

namespace properties {

namespace {

template <typename LibraryRecord>
Record commonPart(const LibraryRecord& from) {
  Record record;
  record.status = from.GetStatus();
  record.cutPoints = from.GetCutPoints();
  record.distinctValues = from.GetNDistinctValues();
  record.totalWeight = from.GetTotalWeight();
  record.totalWeightWithMissing = from.GetTotalWeightWithMissing();
  record.minimum = from.GetMinimum();
  record.maximum = from.GetMaximum();
  return record;
}

}  // namespace

void PrintTo(const Record& record, std::ostream* os) {
  os->precision(17);
  *os << "status " << record.status.GetErrorCode() << ", " << record.distinctValues
      << " values from " << record.minimum << " to " << record.maximum << ", weight "
      << record.totalWeight << " of " << record.totalWeightWithMissing << ", cut points "
      << testing::PrintToString(record.cutPoints) << ", counts "
      << testing::PrintToString(record.counts) << ", model entropy " << record.modelEntropy;
}

Binning::Binning(const DataSet& data, Algorithm algorithm)
    : cases_(data.cases), target_(data.list.plain.target) {
  BINVarList list = data.list.host;
  if (algorithm == Algorithm::kSupervised) {
    BINSettings settings;
    settings.SetTempDirName(directory_.Path());
    mcbinning_tests::apply(data.settings, settings);
    supervised_.reset(BINFactory().CreateBINAlgorithm(settings, list));
  } else {
    EFBINSettings settings;
    settings.SetTempDirName(directory_.Path());
    mcbinning_tests::apply(data.settings, settings);
    equalFrequency_.reset(EFBINFactory().CreateEFBINAlgorithm(settings, list));
  }
}

void Binning::Run(const std::vector<int>* selection) {
  if (supervised_ != nullptr) {
    supervised_->Run(cases_, selection, nullptr);
    return;
  }
  std::vector<int> attributes;
  for (int i = 0; i < target_; ++i) {
    attributes.push_back(i);  // without the target, which the whole list includes
  }
  equalFrequency_->Run(cases_, selection != nullptr ? selection : &attributes);
}

std::vector<Record> Binning::Records() {
  std::vector<Record> records;
  if (supervised_ != nullptr) {
    std::vector<BINAttributeTargetResults> results;
    supervised_->GetOutput()->GetAllCutPoints(results);
    for (const BINAttributeTargetResults& result : results) {
      records.push_back(commonPart(result));
      records.back().counts = result.GetCellCounts();
      records.back().modelEntropy = result.GetModelEntropy();
    }
    return records;
  }
  std::vector<BINAttributeResults> results;
  equalFrequency_->GetOutput()->GetAllCutPoints(results);
  for (const BINAttributeResults& result : results) {
    records.push_back(commonPart(result));
    for (const double weight : result.GetCellCounts()) {
      records.back().counts.push_back({weight});
    }
  }
  return records;
}

std::vector<Record> bin(const DataSet& data, Algorithm algorithm) {
  Binning binning(data, algorithm);
  binning.Run();
  return binning.Records();
}

}  // namespace properties
