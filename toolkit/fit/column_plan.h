/// What becomes of each column of the data.
#ifndef MCBIN_TOOLKIT_FIT_COLUMN_PLAN_H
#define MCBIN_TOOLKIT_FIT_COLUMN_PLAN_H

#include <optional>
#include <string>
#include <vector>

#include "toolkit/fit/column_scan.h"
#include "toolkit/fit/fit_request.h"

namespace mcbin {

enum class ColumnUse { Attribute, Target, Weight, LeftOut };
enum class ColumnType { Scale, Category };

struct ColumnPlan {
  std::string name;
  ColumnUse use = ColumnUse::Attribute;
  bool namedByUser = false;                      ///< By its very name or number, not by a pattern.
  std::optional<ColumnType> declaredType;        ///< With --type.
  std::optional<std::vector<double>> cutPoints;  ///< Given with --cuts.
  bool cutsOfModel = false;                      ///< Given by a model, which need not fit.
  std::string reason;                            ///< Why it is left out.
  MissingRules missing;                          ///< Of an attribute or the weight.
  std::vector<std::string> missingTexts;         ///< As given; what the target's are compared with.
};

/// Applies the request to the names of the columns. Throws DataError for a column that is not
/// there and UsageError for options that contradict each other.
std::vector<ColumnPlan> planColumns(const FitRequest& request,
                                    const std::vector<std::string>& names);

/// Goes over the plan with what the scan saw: leaves columns out that cannot be cut, and throws
/// DataError with the first offending place where only the user can decide. `data` is what messages
/// call the data.
void applyScan(const TableScan& scan, const std::string& data, std::vector<ColumnPlan>& columns);

/// The position of the column of that use, empty when there is none.
std::optional<std::size_t> columnOf(const std::vector<ColumnPlan>& columns, ColumnUse use);

}  // namespace mcbin

#endif
