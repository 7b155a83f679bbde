/// Where the cases of a fit come from.
#ifndef MCBIN_TOOLKIT_FIT_CASE_SOURCE_H
#define MCBIN_TOOLKIT_FIT_CASE_SOURCE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/input/cells.h"

namespace mcbin {

/// Cases that can be gone over again, and what their cells say. What the cells are stored as is the
/// source's own concern: lines of text (TextCases) or typed columns in memory (ColumnCases). The
/// same data give the same answers, whatever they are stored as. Failures are DataErrors that name
/// the place.
class CaseSource {
 public:
  CaseSource() = default;
  CaseSource(const CaseSource&) = delete;
  CaseSource& operator=(const CaseSource&) = delete;
  virtual ~CaseSource() = default;

  /// Distinct, none empty.
  virtual const std::vector<std::string>& ColumnNames() const = 0;

  /// Why the column can be neither cut nor used otherwise; empty for numbers and texts.
  virtual std::string WhyUnfit(std::size_t /*column*/) const { return {}; }

  /// Whether every cell of the column is a number or missing, whichever case is looked at.
  virtual bool HoldsOnlyNumbers(std::size_t /*column*/) const { return false; }

  /// Goes back in front of the first case, where a new source stands.
  virtual void Rewind() = 0;

  /// Steps to the next case; false behind the last one.
  virtual bool NextCase() = 0;

  /// What a cell of the case says. `value` is set only for Number.
  virtual CellKind ReadNumber(std::size_t column, double& value) = 0;

  /// The cell as it stands, or would stand, in a file of text: empty when it is missing. Good until
  /// the next call.
  virtual std::string_view ReadText(std::size_t column) = 0;

  /// "data.csv, line 17" or "row 17": where to look for the case.
  virtual std::string Where() const = 0;

  /// Share of the data gone over so far, 0 to 1; negative when it is not known.
  virtual double ShareRead() const = 0;
};

}  // namespace mcbin

#endif
