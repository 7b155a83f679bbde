/// Writing comma- or tab-separated text.
#ifndef MCBIN_TOOLKIT_TEXT_CSV_TEXT_H
#define MCBIN_TOOLKIT_TEXT_CSV_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// Appends `cell` to `line`, in quotes when reading it back needs them; `delimiter` goes in front
/// of every cell of a line but the first.
void appendCsvCell(std::string& line, std::string_view cell, char delimiter, bool first);

/// Appends a whole line of such cells, with commas, and its end.
void appendCsvLine(std::string& text, const std::vector<std::string>& cells);

}  // namespace mcbin

#endif
