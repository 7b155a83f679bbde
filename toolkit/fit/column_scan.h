/// The first pass over the data: what the cells of each column say.
#ifndef MCBIN_TOOLKIT_FIT_COLUMN_SCAN_H
#define MCBIN_TOOLKIT_FIT_COLUMN_SCAN_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/input/table_reader.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// The library's codes go from 0 to 255.
inline constexpr std::size_t kMaxCategories = 256;

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
};

/// Hashes texts and views alike, so that looking a cell up copies nothing.
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};
using CategoryCodes = std::unordered_map<std::string, int, TextHash, std::equal_to<>>;

struct TableScan {
  std::uint64_t rows = 0;
  std::vector<ColumnScan> columns;
  std::vector<std::string> categories;  ///< Of the target, in order of first appearance.
};

/// How to read the columns.
struct ScanRequest {
  std::vector<ScanAs> columns;
  std::vector<std::string> naTexts;
  std::vector<std::string> targetMissingTexts;
};

/// Reads the table once to its end. DataError for a target with more than 256 categories or a
/// category that is not UTF-8.
TableScan scanTable(TableReader& reader, const ScanRequest& request, Monitor& monitor);

/// The category that a target cell names, empty when it is missing or declared missing.
std::string_view categoryOf(std::string_view cell, const std::vector<std::string>& naTexts,
                            const std::vector<std::string>& missingTexts);

}  // namespace mcbin

#endif
