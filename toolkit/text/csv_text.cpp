#include "toolkit/text/csv_text.h"

namespace mcbin {
namespace {

bool needsQuotes(std::string_view cell, char delimiter) {
  const char special[] = {delimiter, '"', '\n', '\r'};
  return cell.find_first_of(std::string_view(special, sizeof special)) != std::string_view::npos ||
         (!cell.empty() && (cell.front() == ' ' || cell.back() == ' '));
}

}  // namespace

void appendCsvCell(std::string& line, std::string_view cell, char delimiter, bool first) {
  if (!first) line += delimiter;
  if (!needsQuotes(cell, delimiter)) {
    line += cell;
    return;
  }
  line += '"';
  for (const char c : cell) {
    if (c == '"') line += '"';
    line += c;
  }
  line += '"';
}

void appendCsvLine(std::string& text, const std::vector<std::string>& cells) {
  bool first = true;
  for (const std::string& cell : cells) {
    appendCsvCell(text, cell, ',', first);
    first = false;
  }
  text += '\n';
}

}  // namespace mcbin
