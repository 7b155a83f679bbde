/// Tables of a page.
#ifndef MCBIN_TOOLKIT_REPORT_HTML_TABLE_H
#define MCBIN_TOOLKIT_REPORT_HTML_TABLE_H

#include <cstddef>
#include <functional>
#include <string>

#include "toolkit/report/markup.h"
#include "toolkit/text/text_table.h"

namespace mcbin {

/// Writes the inside of a cell when it is more than its text; returns whether it did. Rows count
/// from 1, as row 0 is the header.
using CellWriter = std::function<bool(Markup& html, std::size_t row, std::size_t column)>;

/// Writes `table` with its second column as the header of the rows, in a box that scrolls sideways
/// when the page is narrower. `name` says what the table holds.
void addTable(Markup& html, const TextTable& table, const std::string& name,
              const CellWriter& writeCell = nullptr);

}  // namespace mcbin

#endif
