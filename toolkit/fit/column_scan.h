/// The first pass over the data: what the cells of each column say.
#ifndef MCBIN_TOOLKIT_FIT_COLUMN_SCAN_H
#define MCBIN_TOOLKIT_FIT_COLUMN_SCAN_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/fit/case_source.h"
#include "toolkit/fit/target_classes.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// Where something was first seen.
struct Sighting {
  std::string where;  ///< "data.csv, line 17"
  std::string text;
};

enum class ScanAs {
  Nothing,  ///< The column takes no part.
  Cells,    ///< See whether the cells are numbers or texts.
  Target,   ///< Collect the categories.
};

struct ColumnScan {
  std::optional<Sighting> firstNumber;
  std::optional<Sighting> firstText;
  std::optional<Sighting> firstOutOfRange;
  std::string unfit = {};  ///< CaseSource::WhyUnfit.
};

struct TableScan {
  std::uint64_t rows = 0;
  std::vector<ColumnScan> columns;
  std::vector<std::string> categories;  ///< Of the target, in code order.
  ClassCodes codes;                     ///< Of every text of the target that names a category.
};

/// How to read the columns.
struct ScanRequest {
  std::vector<ScanAs> columns;
  std::vector<std::string> naTexts;
  std::vector<std::string> targetMissingTexts;
};

/// Goes over the cases once to their end. DataError for a target with more than 256 categories or a
/// category that is not UTF-8.
TableScan scanTable(CaseSource& cases, const ScanRequest& request, Monitor& monitor);

/// The text of the category that a target cell names, empty when it is missing or declared missing;
/// a number is declared missing in whatever way it is written.
std::string_view categoryOf(std::string_view cell, const std::vector<std::string>& naTexts,
                            const std::vector<std::string>& missingTexts);

}  // namespace mcbin

#endif
