#ifndef MCBINNING_DATA_ATTRIBUTE_TABLE_H
#define MCBINNING_DATA_ATTRIBUTE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "data/data_preparator.h"
#include "data/sorted_rows.h"
#include "mcbinning/status.h"

namespace MCBinning {

/// The sorted values of one attribute at a time, read back from the preparator's column files, and
/// their summary. Rows handed out belong to the table and are good until the next build. Summaries
/// describe the last build; one that failed leaves no rows, 0 for every count and weight, and
/// system-missing as minimum and maximum.
class BINAttributeTable {
 public:
  /// `preparator` is borrowed; it has made its pass and makes no other.
  explicit BINAttributeTable(const BINDataPreparator& preparator);
  BINAttributeTable(const BINAttributeTable&) = delete;
  BINAttributeTable& operator=(const BINAttributeTable&) = delete;
  ~BINAttributeTable();

  /// OK when the variable at list index `target` has category codes to bin against, else error
  /// 120010.
  MCStatus CheckTarget(int target) const;

  /// Sets `rows` to the cases in which attribute and target are both present, ascending by value
  /// and within a value in the tie order (mcbinning.h). On failure `rows` is null and the error is
  /// 120010 (the target is unusable), 120013 (the attribute has no column or its column was given
  /// up; datum 0 is the attribute), or 3 (no memory for the rows, or a column file that cannot be
  /// read or ends before the last case). The target is looked at first.
  MCStatus BuildSupervisedTable(int attribute, int target, SortedRows*& rows);

  /// The same without a target, whether or not the list has one: the cases in which the attribute
  /// is present.
  MCStatus BuildUnsupervisedTable(int attribute, SortedRows*& rows);

  /// The highest category code of the last supervised table's target, over all cases, plus 1.
  std::uint32_t GetNTargetCategories() const { return targetCategories_; }

  /// The number of cases in the rows.
  std::uint32_t GetNRows() const { return summary_.rows; }

  /// -0.0 and 0.0 are one value, every NaN is a value of its own.
  std::uint32_t GetNDistinctValues() const { return summary_.distinctValues; }

  /// The value of the first and of the last row; system-missing without rows.
  double GetMinimum() const { return summary_.minimum; }
  double GetMaximum() const { return summary_.maximum; }

  /// The weight of the rows, and the weight of every case. Both are sums in the order of the cases.
  double GetTotalWeight() const { return summary_.totalWeight; }
  double GetTotalWeightWithMissing() const { return summary_.totalWeightWithMissing; }

 private:
  struct Summary {
    Summary();
    std::uint32_t rows = 0;
    std::uint32_t distinctValues = 0;
    double totalWeight = 0.0;
    double totalWeightWithMissing = 0.0;
    double minimum;
    double maximum;
  };

  bool IsColumnUsed(int column) const;
  MCStatus CheckAttribute(int attribute) const;
  void DropBuild();
  MCStatus Build(int attribute, int targetColumn, SortedRows*& rows);
  bool FillRows(int attribute, int targetColumn);
  std::size_t CaseCount() const { return preparator_.GetNumberOfCasesUsed(); }
  bool ReadColumn(int column, std::span<double> cells) const;
  bool HoldTarget(int column);
  bool HoldWeights();
  void SelectCases(bool withTarget, std::span<double> cells);

  const BINDataPreparator& preparator_;
  std::uint32_t targetCategories_ = 0;
  Summary summary_;
  SortedRows rows_;
  // What every attribute is read with stays in memory, case by case.
  int heldTarget_ = -1;  // column of the codes below, -1 while there are none
  std::vector<std::uint16_t> targetCodes_;
  bool weightsAreHeld_ = false;
  bool wholeWeights_ = true;
  std::vector<double> weights_;  // empty when all are 1
};

}  // namespace MCBinning

#endif
