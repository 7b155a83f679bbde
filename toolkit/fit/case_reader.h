/// What the cells of a case mean once the columns are planned.
#ifndef MCBIN_TOOLKIT_FIT_CASE_READER_H
#define MCBIN_TOOLKIT_FIT_CASE_READER_H

#include <mcbinning/encoders.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/fit/case_source.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/column_scan.h"
#include "toolkit/fit/declared_values.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// Which column of the data each variable of the library's list is. The list holds the target (if
/// any), the weight (if any) and then the attributes in the order of their columns.
struct FeedLayout {
  std::optional<std::size_t> targetColumn;
  std::optional<std::size_t> weightColumn;
  std::vector<std::size_t> attributeColumns;
  ClosedSide closedSide = ClosedSide::Right;  ///< Of bins whose cut points are given.
};

/// Notes by column and by position among its declarations: their texts may be the same.
using Notes = std::map<std::pair<std::size_t, std::size_t>, std::string>;

/// Reads the current case of a source. DataError for a cell that contradicts the scan, and for the
/// number that stands for a missing value inside the library.
class CaseReader {
 public:
  /// Everything is borrowed.
  CaseReader(CaseSource& source, const std::vector<ColumnPlan>& columns, const FeedLayout& layout,
             const TableScan& scan, const std::vector<std::string>& naTexts,
             WeightRounding rounding);

  /// Negative for no category, and without a target.
  int TargetCode();
  /// As the library encodes it: its missing value drops the case. 1 without a weight.
  double RoundedWeight();
  /// Empty when it is missing.
  std::optional<double> Value(std::size_t column);
  /// As Value; tells, too, whether the value is declared missing.
  std::optional<double> Value(std::size_t column, bool& isDeclared);

  /// What the user declared missing and no case that was read has, in words.
  Notes NeverMet() const;

 private:
  [[noreturn]] void FailChanged(std::size_t column) const;

  CaseSource& source_;
  const std::vector<ColumnPlan>& columns_;
  const FeedLayout& layout_;
  const ClassCodes& codes_;
  const std::vector<std::string>& naTexts_;
  BINRoundEncoder weightEncoder_;
  std::vector<DeclaredValues> declared_;  ///< By column.
};

}  // namespace mcbin

#endif
