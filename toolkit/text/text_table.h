/// Aligned plain-text tables.
#ifndef MCBIN_TOOLKIT_TEXT_TEXT_TABLE_H
#define MCBIN_TOOLKIT_TEXT_TEXT_TABLE_H

#include <string>
#include <vector>

namespace mcbin {

/// Collects rows of cells and writes them with every column as wide as its widest cell (counted in
/// characters, not bytes). The first column is left-aligned unless told otherwise, others right.
class TextTable {
 public:
  enum class Align { Left, Right };

  explicit TextTable(std::vector<std::string> header);
  void SetAlign(std::size_t column, Align align);
  void AddRow(std::vector<std::string> cells);

  /// Every line indented by `indent` blanks and ended by a line end; a rule under the header.
  std::string Text(std::size_t indent = 0) const;

  /// The same as a Markdown table.
  std::string Markdown() const;

  /// The header, then the rows.
  const std::vector<std::vector<std::string>>& Rows() const { return rows_; }
  Align AlignOf(std::size_t column) const { return aligns_.at(column); }

 private:
  std::vector<std::vector<std::string>> rows_;
  std::vector<Align> aligns_;
};

}  // namespace mcbin

#endif
