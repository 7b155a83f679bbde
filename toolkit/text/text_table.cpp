#include "toolkit/text/text_table.h"

#include <algorithm>
#include <utility>

#include "toolkit/text/markdown_text.h"

namespace mcbin {
namespace {

/// Characters of a UTF-8 text; a byte that continues a character does not count.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  }));
}

}  // namespace

TextTable::TextTable(std::vector<std::string> header) : aligns_(header.size(), Align::Right) {
  if (!aligns_.empty()) aligns_[0] = Align::Left;
  rows_.push_back(std::move(header));
}

void TextTable::SetAlign(std::size_t column, Align align) { aligns_.at(column) = align; }

void TextTable::AddRow(std::vector<std::string> cells) {
  cells.resize(aligns_.size());
  rows_.push_back(std::move(cells));
}

std::string TextTable::Text(std::size_t indent) const {
  std::vector<std::size_t> widths(aligns_.size(), 0);
  for (const auto& row : rows_) {
    for (std::size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], widthOf(row[c]));
  }
  std::string text;
  auto addLine = [&](const std::vector<std::string>& cells) {
    std::string line(indent, ' ');
    for (std::size_t c = 0; c < cells.size(); ++c) {
      const std::string padding(widths[c] - widthOf(cells[c]), ' ');
      if (c > 0) line += "  ";
      line += aligns_[c] == Align::Left ? cells[c] + padding : padding + cells[c];
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  };
  addLine(rows_.front());
  std::vector<std::string> rule;
  rule.reserve(widths.size());
  for (std::size_t width : widths) rule.emplace_back(width, '-');
  addLine(rule);
  for (std::size_t r = 1; r < rows_.size(); ++r) addLine(rows_[r]);
  return text;
}

std::string TextTable::Markdown() const {
  std::string text;
  const auto addLine = [&text](const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) text += "| " + markdownText(cell) + " ";
    text += "|\n";
  };
  addLine(rows_.front());
  for (const Align align : aligns_) text += align == Align::Left ? "| --- " : "| ---: ";
  text += "|\n";
  for (std::size_t r = 1; r < rows_.size(); ++r) addLine(rows_[r]);
  return text;
}

}  // namespace mcbin
