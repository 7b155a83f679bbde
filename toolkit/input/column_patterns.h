/// How the user names columns.
#ifndef MCBIN_TOOLKIT_INPUT_COLUMN_PATTERNS_H
#define MCBIN_TOOLKIT_INPUT_COLUMN_PATTERNS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// The column that `text` names: an exact name, or else a number counting from 1. `option` stands
/// in front of the DataError that there is no such column.
std::size_t findColumn(const std::vector<std::string>& names, const std::string& text,
                       std::string_view option);

/// The columns that `pattern` names, in order: an exact name, or else a number counting from 1, or
/// else a pattern of *, ? and [...]. DataError when it names none.
std::vector<std::size_t> matchColumns(const std::vector<std::string>& names,
                                      const std::string& pattern, std::string_view option);

/// Whether the text holds one of the pattern characters *, ? and [.
bool isPattern(std::string_view text);

}  // namespace mcbin

#endif
