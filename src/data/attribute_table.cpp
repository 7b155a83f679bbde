#include "data/attribute_table.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cstddef>
#include <exception>

#include "data/category_code.h"

using MCBinning::MCStatus;
using MCBinning::SortedRows;

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
  targetReader_.reset();
  weightReader_.reset();
  return preparator_.PrepareData(cases_);
}

bool BINAttributeTable::IsColumnUsed(int column) const {
  bool isUsed = false;
  return preparator_.GetColumnUseFlag(column, isUsed).IsOK() && isUsed;
}

MCStatus BINAttributeTable::CheckTarget(int target) const {
  const int column = preparator_.GetColumnOf(target);
  return IsColumnUsed(column) && preparator_.HoldsCodes(column) ? MCStatus()
                                                                : MCStatus(120010, false);
}

MCStatus BINAttributeTable::CheckAttribute(int attribute) const {
  if (IsColumnUsed(preparator_.GetColumnOf(attribute))) {
    return MCStatus();
  }
  MCStatus status(120013, false);
  status.SetDiscreteDatum(0, attribute);
  return status;
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
  rows.Restart(0);
}

MCStatus BINAttributeTable::Build(int attribute, int targetColumn, SortedRows& rows) {
  bool filled = false;
  try {
    filled = FillRows(attribute, targetColumn, rows);
  } catch (const std::exception&) {
    // No memory for the rows or for a reader.
  }
  if (filled) {
    return MCStatus();
  }
  DropBuild(rows);
  // A reader that failed for want of a file handle gets another chance at the next build.
  targetReader_.reset();
  weightReader_.reset();
  return MCStatus(3, false);
}

bool BINAttributeTable::FillRows(int attribute, int targetColumn, SortedRows& rows) {
  if (preparator_.GetFileNames().empty()) {
    return false;
  }
  rows.Restart(preparator_.GetNumberOfCasesUsed());
  StartReaders(targetColumn);
  const auto attributeReader = OpenColumn(preparator_.GetColumnOf(attribute));
  if (!ReadRows(*attributeReader, targetColumn < 0 ? nullptr : targetReader_.get(), rows)) {
    return false;
  }
  rows.Sort();
  Summarize(rows);
  return true;
}

std::unique_ptr<BINAttributeTable::Reader> BINAttributeTable::OpenColumn(int column) const {
  return std::make_unique<Reader>(preparator_.GetFileNames()[static_cast<std::size_t>(column)],
                                  preparator_.GetFileSystem());
}

void BINAttributeTable::StartReaders(int targetColumn) {
  if (targetReader_ && openTargetColumn_ == targetColumn) {
    targetReader_->Rewind();
  } else if (targetColumn >= 0) {
    targetReader_ = OpenColumn(targetColumn);
    openTargetColumn_ = targetColumn;
  }
  if (weightReader_) {
    weightReader_->Rewind();
  } else if (preparator_.GetWeightColumn() >= 0) {
    weightReader_ = OpenColumn(preparator_.GetWeightColumn());
  }
}

bool BINAttributeTable::ReadRows(Reader& attribute, Reader* target, SortedRows& rows) {
  Reader* const weight = weightReader_.get();
  const std::uint32_t cases = preparator_.GetNumberOfCasesUsed();
  for (std::uint32_t i = 0; i < cases; ++i) {
    if (!attribute.HasNext() || (target != nullptr && !target->HasNext()) ||
        (weight != nullptr && !weight->HasNext())) {
      return false;
    }
    const double value = attribute.Next();
    const double targetCell = target != nullptr ? target->Next() : 0.0;
    const double caseWeight = weight != nullptr ? weight->Next() : 1.0;
    summary_.totalWeightWithMissing += caseWeight;
    if (value == MCMV::gMissingValue || (target != nullptr && targetCell == MCMV::gMissingValue)) {
      continue;
    }
    const int code = MCBinning::TruncatedCode(targetCell);
    if (target != nullptr && static_cast<std::uint32_t>(code) >= targetCategories_) {
      return false;  // not what the pass wrote, and no index to count with
    }
    summary_.totalWeight += caseWeight;
    rows.Append(value, code, caseWeight);
  }
  return true;
}

void BINAttributeTable::Summarize(const SortedRows& rows) {
  if (rows.Size() == 0) {
    return;
  }
  summary_.rows = static_cast<std::uint32_t>(rows.Size());
  summary_.minimum = rows.Value(0);
  summary_.maximum = rows.Value(rows.Size() - 1);
  summary_.distinctValues = 1;
  for (std::size_t row = 1; row < rows.Size(); ++row) {
    if (rows.Value(row) != rows.Value(row - 1)) {
      ++summary_.distinctValues;
    }
  }
}

MCStatus BINAttributeTable::CountPerBin(const std::vector<double>* boundaries,
                                        bool rightBorderClosed, std::vector<double>& counts) const {
  if (boundaries == nullptr || boundaries->size() < 2) {
    return MCStatus(120002, true);
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
        return MCStatus(120002, true);
      }
    }
    running[static_cast<std::size_t>(supervisedRows_.Code(row))] += supervisedRows_.Weight(row);
  }
  if (bin + 1 != bins) {
    return MCStatus(120002, true);
  }
  fileBin();
  return MCStatus();
}
