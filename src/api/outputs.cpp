#include "mcbinning/outputs.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <utility>

#include "status/status_codes.h"

using MCBinning::MCStatus;

namespace {

MCStatus noSuchResult() { return MCBinning::errorStatus(MCBinning::kNoSuchIndex); }

MCStatus noResults() { return MCBinning::errorStatus(MCBinning::kNoResults); }

bool isPossiblePair(int attribute, int target) {
  return attribute >= 0 && target >= 0 && attribute != target;
}

// Row r holds the values from r times the row length on; values beyond the last row are dropped.
std::vector<std::vector<double>> rowsOfBins(const std::vector<double>& flatCounts,
                                            std::size_t nBins) {
  const std::size_t rowLength = flatCounts.size() / nBins;
  std::vector<std::vector<double>> rows;
  rows.reserve(nBins);
  for (std::size_t row = 0; row < nBins; ++row) {
    const double* begin = flatCounts.data() + row * rowLength;
    rows.emplace_back(begin, begin + rowLength);
  }
  return rows;
}

void displaySummary(std::ostream& os, unsigned int nDistinctValues, double totalWeight,
                    double totalWeightWithMissing, double minimum, double maximum) {
  os << "Number of distinct values = " << nDistinctValues << std::endl;
  os << "Total weight = " << totalWeight << std::endl;
  os << "Total weight with missing = " << totalWeightWithMissing << std::endl;
  os << "Minimum = " << minimum << std::endl;
  os << "Maximum = " << maximum << std::endl;
}

void displayStatusAndCutPoints(std::ostream& os, const MCStatus& status,
                               const std::vector<double>& cutPoints) {
  if (!status.IsOK()) {
    os << "Status has error code " << status.GetErrorCode() << std::endl;
  }
  os << "Number of cutpoints = " << cutPoints.size();
  if (!cutPoints.empty()) {
    os << ", the cutpoints:";
  }
  os << std::endl;
  for (const double cutPoint : cutPoints) {
    os << cutPoint << std::endl;
  }
}

void displayCounts(std::ostream& os, const std::vector<double>& counts) {
  for (const double count : counts) {
    os << count << "  ";
  }
  os << std::endl;
}

template <typename Record>
void displayOutput(std::ostream& os, const char* className, const std::vector<Record>& results) {
  os << std::endl;
  os << "Start of " << className << " display" << std::endl;
  os << "cut point :";
  for (const Record& record : results) {
    record.Display(os);
  }
  os << std::endl;
  os << "End of " << className << " display" << std::endl;
}

// Leaves `out` as it was when there is no memory.
template <typename Record>
MCStatus copyOne(const Record& record, Record& out) {
  Record copy(record);
  out = std::move(copy);
  return out.GetStatus();
}

template <typename Record>
MCStatus copyAll(const std::vector<Record>& results, std::vector<Record>& out) {
  if (results.empty()) {
    return noResults();
  }
  std::vector<Record> copies(results);
  out.swap(copies);
  return {};
}

}  // namespace

const MCStatus& BINAttributeTargetResults::GetStatus() const { return status_; }

int BINAttributeTargetResults::GetAttributeIndex() const { return attributeIndex_; }

int BINAttributeTargetResults::GetTargetIndex() const { return targetIndex_; }

const std::vector<double>& BINAttributeTargetResults::GetCutPoints() const { return cutPoints_; }

const std::vector<std::vector<double>>& BINAttributeTargetResults::GetCellCounts() const {
  return cellCounts_;
}

unsigned int BINAttributeTargetResults::GetNDistinctValues() const { return nDistinctValues_; }

double BINAttributeTargetResults::GetTotalWeight() const { return totalWeight_; }

double BINAttributeTargetResults::GetTotalWeightWithMissing() const {
  return totalWeightWithMissing_;
}

double BINAttributeTargetResults::GetMinimum() const { return minimum_; }

double BINAttributeTargetResults::GetMaximum() const { return maximum_; }

double BINAttributeTargetResults::GetModelEntropy() const { return modelEntropy_; }

void BINAttributeTargetResults::Display(std::ostream& os) const {
  os << std::endl;
  os << "Start of BINAttributeTargetResults display" << std::endl;
  os << "BINDataTuple   attribute = " << attributeIndex_ << std::endl;
  os << "target = " << targetIndex_ << std::endl;
  displaySummary(os, nDistinctValues_, totalWeight_, totalWeightWithMissing_, minimum_, maximum_);
  os << "Model Entropy = " << modelEntropy_ << std::endl;
  displayStatusAndCutPoints(os, status_, cutPoints_);
  os << "The CellCounts are" << std::endl;
  for (const std::vector<double>& row : cellCounts_) {
    displayCounts(os, row);
  }
  os << std::endl;
  os << "End of BINAttributeTargetResults display" << std::endl;
}

BINOutput::BINOutput() = default;

BINOutput::BINOutput(const BINOutput& other) = default;

BINOutput& BINOutput::operator=(const BINOutput& other) {
  BINOutput copy(other);
  results_.swap(copy.results_);
  pairIndex_.swap(copy.pairIndex_);
  return *this;
}

BINOutput::~BINOutput() = default;

void BINOutput::Display(std::ostream& os) const { displayOutput(os, "BINOutput", results_); }

MCStatus BINOutput::GetAllCutPoints(std::vector<BINAttributeTargetResults>& out) const {
  return copyAll(results_, out);
}

MCStatus BINOutput::GetAttributeCutPoints(int attribute,
                                          std::vector<BINAttributeTargetResults>& out) const {
  if (attribute < 0) {
    return noSuchResult();
  }
  std::vector<BINAttributeTargetResults> found;
  std::copy_if(results_.begin(), results_.end(), std::back_inserter(found),
               [&](const auto& record) { return record.attributeIndex_ == attribute; });
  const MCStatus status = found.empty() ? noSuchResult() : found.back().status_;
  out.insert(out.end(), std::make_move_iterator(found.begin()),
             std::make_move_iterator(found.end()));
  return status;
}

MCStatus BINOutput::GetAttributeTargetCutPoints(int attribute, int target,
                                                BINAttributeTargetResults& out) const {
  if (!isPossiblePair(attribute, target)) {
    return noSuchResult();
  }
  const auto position = pairIndex_.find({attribute, target});
  if (position == pairIndex_.end()) {
    return noSuchResult();
  }
  return copyOne(results_[static_cast<std::size_t>(position->second)], out);
}

MCStatus BINOutput::SetAttributeTargetResults(MCStatus status, const std::set<double>& cutPoints,
                                              const std::vector<double>& cellCounts, int attribute,
                                              int target, unsigned int nDistinctValues,
                                              double totalWeight, double totalWeightWithMissing,
                                              double minimum, double maximum, double modelEntropy) {
  if (!isPossiblePair(attribute, target)) {
    return noSuchResult();
  }
  BINAttributeTargetResults record;
  record.status_ = status;
  record.attributeIndex_ = attribute;
  record.targetIndex_ = target;
  record.cutPoints_.assign(cutPoints.begin(), cutPoints.end());
  record.cellCounts_ = rowsOfBins(cellCounts, cutPoints.size() + 1);
  record.nDistinctValues_ = nDistinctValues;
  record.totalWeight_ = totalWeight;
  record.totalWeightWithMissing_ = totalWeightWithMissing;
  record.minimum_ = minimum;
  record.maximum_ = maximum;
  record.modelEntropy_ = modelEntropy;
  File(std::move(record));
  return {};
}

void BINOutput::File(BINAttributeTargetResults record) {
  const std::pair<int, int> pair(record.attributeIndex_, record.targetIndex_);
  results_.push_back(std::move(record));
  try {
    pairIndex_.emplace(pair, static_cast<int>(results_.size() - 1));
  } catch (...) {
    results_.pop_back();  // a record is found both ways or not at all
    throw;
  }
}

const MCStatus& BINAttributeResults::GetStatus() const { return status_; }

int BINAttributeResults::GetAttributeIndex() const { return attributeIndex_; }

const std::vector<double>& BINAttributeResults::GetCutPoints() const { return cutPoints_; }

const std::vector<double>& BINAttributeResults::GetCellCounts() const { return cellCounts_; }

unsigned int BINAttributeResults::GetNDistinctValues() const { return nDistinctValues_; }

double BINAttributeResults::GetTotalWeight() const { return totalWeight_; }

double BINAttributeResults::GetTotalWeightWithMissing() const { return totalWeightWithMissing_; }

double BINAttributeResults::GetMinimum() const { return minimum_; }

double BINAttributeResults::GetMaximum() const { return maximum_; }

void BINAttributeResults::Display(std::ostream& os) const {
  os << std::endl;
  os << "Start of BINAttributeResults display" << std::endl;
  os << "BINDataTuple   attribute = " << attributeIndex_ << std::endl;
  displaySummary(os, nDistinctValues_, totalWeight_, totalWeightWithMissing_, minimum_, maximum_);
  displayStatusAndCutPoints(os, status_, cutPoints_);
  os << "The CellCounts are" << std::endl;
  displayCounts(os, cellCounts_);
  os << "End of BINAttributeResults display" << std::endl;
}

EFBINOutput::EFBINOutput() = default;

EFBINOutput::EFBINOutput(const EFBINOutput& other) = default;

EFBINOutput& EFBINOutput::operator=(const EFBINOutput& other) {
  EFBINOutput copy(other);
  results_.swap(copy.results_);
  return *this;
}

EFBINOutput::~EFBINOutput() = default;

void EFBINOutput::Display(std::ostream& os) const { displayOutput(os, "EFBINOutput", results_); }

MCStatus EFBINOutput::GetAllCutPoints(std::vector<BINAttributeResults>& out) const {
  return copyAll(results_, out);
}

MCStatus EFBINOutput::GetAttributeCutPoints(int attribute, BINAttributeResults& out) const {
  if (attribute < 0) {
    return noSuchResult();
  }
  const auto record = std::find_if(
      results_.begin(), results_.end(),
      [&](const BINAttributeResults& candidate) { return candidate.attributeIndex_ == attribute; });
  if (record == results_.end()) {
    return noSuchResult();
  }
  return copyOne(*record, out);
}

MCStatus EFBINOutput::SetAttributeResults(MCStatus status, const std::vector<double>& cutPoints,
                                          const std::vector<double>& cellCounts, int attribute,
                                          unsigned int nDistinctValues, double totalWeight,
                                          double totalWeightWithMissing, double minimum,
                                          double maximum) {
  if (attribute < 0) {
    return MCBinning::errorStatus(MCBinning::kAttributeOutOfRange);
  }
  BINAttributeResults record;
  record.status_ = status;
  record.attributeIndex_ = attribute;
  record.cutPoints_ = cutPoints;
  record.cellCounts_ = cellCounts;
  record.nDistinctValues_ = nDistinctValues;
  record.totalWeight_ = totalWeight;
  record.totalWeightWithMissing_ = totalWeightWithMissing;
  record.minimum_ = minimum;
  record.maximum_ = maximum;
  File(std::move(record));
  return {};
}

void EFBINOutput::File(BINAttributeResults record) { results_.push_back(std::move(record)); }
