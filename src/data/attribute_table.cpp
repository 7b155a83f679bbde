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
constexpr int kNoTarget = -1;  // in place of its column

}  // namespace

BINAttributeTable::Summary::Summary()
    : minimum(MCMV::gMissingValue), maximum(MCMV::gMissingValue) {}

BINAttributeTable::BINAttributeTable(const BINDataPreparator& preparator)
    : preparator_(preparator) {}

BINAttributeTable::~BINAttributeTable() = default;

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

MCStatus BINAttributeTable::BuildSupervisedTable(int attribute, int target, SortedRows*& rows) {
  rows = nullptr;
  DropBuild();
  const MCStatus status = CheckTarget(target);
  if (!status.IsOK()) {
    return status;
  }
  const int targetColumn = preparator_.GetColumnOf(target);
  targetCategories_ = static_cast<std::uint32_t>(preparator_.GetHighestCode(targetColumn)) + 1;
  return Build(attribute, targetColumn, rows);
}

MCStatus BINAttributeTable::BuildUnsupervisedTable(int attribute, SortedRows*& rows) {
  rows = nullptr;
  DropBuild();
  return Build(attribute, kNoTarget, rows);
}

void BINAttributeTable::DropBuild() {
  summary_ = Summary();
  rows_.Clear();
}

MCStatus BINAttributeTable::Build(int attribute, int targetColumn, SortedRows*& rows) {
  const MCStatus status = CheckAttribute(attribute);
  if (!status.IsOK()) {
    return status;
  }
  try {
    if (FillRows(attribute, targetColumn)) {
      rows = &rows_;
      return MCStatus();
    }
  } catch (const std::exception&) {
    // No memory for the rows.
  }
  DropBuild();
  return errorStatus(kFailed);
}

bool BINAttributeTable::FillRows(int attribute, int targetColumn) {
  const bool withTarget = targetColumn != kNoTarget;
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
  rows_.Fill(columns, withTarget ? targetCategories_ : 1, wholeWeights_);
  summary_.distinctValues = static_cast<std::uint32_t>(rows_.CountDistinctValues());
  if (rows_.Size() > 0) {
    summary_.minimum = rows_.Value(0);
    summary_.maximum = rows_.Value(rows_.Size() - 1);
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
    const int code = truncatedCode(cells[i]);
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
    wholeWeights_ = arePackable(weights_);
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

}  // namespace MCBinning
