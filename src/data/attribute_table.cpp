#include "data/attribute_table.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <exception>
#include <memory>

#include "data/binary_record_iterator.h"
#include "data/category_code.h"
#include "status/status_codes.h"

namespace MCBinning {
namespace {

constexpr std::uint16_t kMissingTarget = 256;

}  // namespace

BINAttributeTable::Summary::Summary()
    : minimum(MCMV::gMissingValue), maximum(MCMV::gMissingValue) {}

BINAttributeTable::BINAttributeTable(BINDataPreparator& preparator, BINCaseIterator& cases)
    : preparator_(preparator), cases_(cases) {}

BINAttributeTable::~BINAttributeTable() = default;

void BINAttributeTable::SetEFThreshold(std::uint32_t threshold) {
  if (threshold != 0) {
    threshold_ = threshold;
  }
}

MCStatus BINAttributeTable::Prepare() {
  heldTarget_ = -1;
  weightsAreHeld_ = false;
  return preparator_.PrepareData(cases_);
}

bool BINAttributeTable::IsColumnUsed(int column) const {
  bool isUsed = false;
  return preparator_.GetColumnUseFlag(column, isUsed).IsOK() && isUsed;
}

MCStatus BINAttributeTable::CheckTarget(int target) const {
  const int column = preparator_.GetColumnOf(target);
  return IsColumnUsed(column) && preparator_.HoldsCodes(column) ? MCStatus()
                                                                : errorStatus(kUnusableTarget);
}

MCStatus BINAttributeTable::CheckAttribute(int attribute) const {
  return IsColumnUsed(preparator_.GetColumnOf(attribute))
             ? MCStatus()
             : about(errorStatus(kNoSuchIndex), attribute);
}

MCStatus BINAttributeTable::BuildSupervisedTable(int attribute, int target,
                                                 const SortedRows** rows) {
  *rows = nullptr;
  DropBuild(supervisedRows_);
  isEFNeeded_ = false;
  MCStatus status = CheckTarget(target);
  if (status.IsOK()) {
    status = CheckAttribute(attribute);
  }
  if (!status.IsOK()) {
    return status;
  }
  const int targetColumn = preparator_.GetColumnOf(target);
  targetCategories_ = static_cast<std::uint32_t>(preparator_.GetHighestCode(targetColumn)) + 1;
  status = Build(attribute, targetColumn, supervisedRows_);
  if (status.IsOK()) {
    isEFNeeded_ = threshold_ != 0 && summary_.distinctValues > threshold_;
    if (!isEFNeeded_) {
      // Pre-bins add up weights across values, in the order of the cases; candidates do not.
      supervisedRows_.Merge();
    }
    *rows = &supervisedRows_;
  }
  return status;
}

MCStatus BINAttributeTable::BuildUnsupervisedTable(int attribute, const SortedRows** rows) {
  *rows = nullptr;
  DropBuild(unsupervisedRows_);
  MCStatus status = CheckAttribute(attribute);
  if (status.IsOK()) {
    status = Build(attribute, -1, unsupervisedRows_);
  }
  if (status.IsOK()) {
    *rows = &unsupervisedRows_;
  }
  return status;
}

void BINAttributeTable::DropBuild(SortedRows& rows) {
  summary_ = Summary();
  rows.Clear();
}

MCStatus BINAttributeTable::Build(int attribute, int targetColumn, SortedRows& rows) {
  bool filled = false;
  try {
    filled = FillRows(attribute, targetColumn, rows);
  } catch (const std::exception&) {
    // No memory for the rows.
  }
  if (filled) {
    return MCStatus();
  }
  DropBuild(rows);
  return errorStatus(kFailed);
}

bool BINAttributeTable::FillRows(int attribute, int targetColumn, SortedRows& rows) {
  const bool withTarget = targetColumn >= 0;
  if (preparator_.GetFileNames().empty() || !HoldWeights() ||
      (withTarget && !HoldTarget(targetColumn))) {
    return false;
  }
  const auto memory = std::make_unique_for_overwrite<double[]>(CaseCount());
  const std::span<double> cells(memory.get(), CaseCount());
  if (!ReadColumn(preparator_.GetColumnOf(attribute), cells)) {
    return false;
  }
  SelectCases(withTarget, cells);
  const CaseColumns columns{cells, withTarget ? targetCodes_.data() : nullptr,
                            weights_.empty() ? nullptr : weights_.data()};
  rows.Fill(columns, withTarget ? targetCategories_ : 1, wholeWeights_);
  summary_.distinctValues = static_cast<std::uint32_t>(rows.CountDistinctValues());
  if (rows.Size() > 0) {
    summary_.minimum = rows.Value(0);
    summary_.maximum = rows.Value(rows.Size() - 1);
  }
  return true;
}

/// False when the file does not open, cannot be read or ends before the last case.
bool BINAttributeTable::ReadColumn(int column, std::span<double> cells) const {
  BinaryRecordIterator reader(preparator_.GetFileNames()[static_cast<std::size_t>(column)],
                              preparator_.GetFileSystem());
  return reader.Take(cells) == cells.size();
}

bool BINAttributeTable::HoldTarget(int column) {
  if (heldTarget_ == column) {
    return true;
  }
  heldTarget_ = -1;
  std::vector<double> cells(CaseCount());
  if (!ReadColumn(column, cells)) {
    return false;
  }
  targetCodes_.resize(cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const int code = TruncatedCode(cells[i]);
    if (cells[i] == MCMV::gMissingValue) {
      targetCodes_[i] = kMissingTarget;
    } else if (static_cast<std::uint32_t>(code) < targetCategories_) {
      targetCodes_[i] = static_cast<std::uint16_t>(code);
    } else {
      return false;  // not what the pass wrote, and no index to count with
    }
  }
  heldTarget_ = column;
  return true;
}

bool BINAttributeTable::HoldWeights() {
  if (weightsAreHeld_) {
    return true;
  }
  weights_.clear();
  wholeWeights_ = true;
  if (preparator_.GetWeightColumn() >= 0) {
    weights_.resize(CaseCount());
    if (!ReadColumn(preparator_.GetWeightColumn(), weights_)) {
      return false;
    }
    wholeWeights_ = ArePackable(weights_);
    if (std::all_of(weights_.begin(), weights_.end(),
                    [](double weight) { return weight == 1.0; })) {
      weights_ = std::vector<double>();
    }
  }
  weightsAreHeld_ = true;
  return true;
}

/// Puts system-missing into the cell of each case that makes no row, counts the others and adds up
/// the case weights.
void BINAttributeTable::SelectCases(bool withTarget, std::span<double> cells) {
  const double missing = MCMV::gMissingValue;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (withTarget && targetCodes_[i] == kMissingTarget) {
      cells[i] = missing;
    }
    summary_.rows += cells[i] != missing ? 1 : 0;
  }
  if (weights_.empty()) {
    summary_.totalWeight = summary_.rows;
    summary_.totalWeightWithMissing = static_cast<double>(cells.size());
    return;
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    summary_.totalWeightWithMissing += weights_[i];
    if (cells[i] != missing) {
      summary_.totalWeight += weights_[i];
    }
  }
}

MCStatus BINAttributeTable::CountPerBin(const std::vector<double>* boundaries,
                                        bool rightBorderClosed, std::vector<double>& counts) const {
  if (boundaries == nullptr || boundaries->size() < 2) {
    return warningStatus(kInconsistentTable);
  }
  const std::size_t bins = boundaries->size() - 1;
  const std::size_t categories = targetCategories_;
  counts.assign(bins * categories, 0.0);
  std::vector<double> running(categories, 0.0);
  std::size_t bin = 0;
  const auto fileBin = [&] {
    std::copy(running.begin(), running.end(),
              counts.begin() + static_cast<std::ptrdiff_t>(bin * categories));
  };
  for (std::size_t row = 0; row < supervisedRows_.Size(); ++row) {
    const double value = supervisedRows_.Value(row);
    const auto belongs = [&](double upper) {
      return rightBorderClosed ? value <= upper : value < upper;
    };
    while (!belongs((*boundaries)[bin + 1])) {
      fileBin();
      std::fill(running.begin(), running.end(), 0.0);
      if (++bin == bins) {
        return warningStatus(kInconsistentTable);
      }
    }
    running[static_cast<std::size_t>(supervisedRows_.Code(row))] += supervisedRows_.Weight(row);
  }
  if (bin + 1 != bins) {
    return warningStatus(kInconsistentTable);
  }
  fileBin();
  return MCStatus();
}

}  // namespace MCBinning
