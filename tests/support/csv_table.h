#ifndef MCBINNING_TESTS_SUPPORT_CSV_TABLE_H
#define MCBINNING_TESTS_SUPPORT_CSV_TABLE_H

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace mcbinning_tests {

/// A comma-separated file with a header line. Quotes around a cell are dropped; a comma inside them
/// is not understood. Throws std::runtime_error when the file cannot be read, a row has too few or
/// too many cells, or a column is unknown.
class CsvTable {
 public:
  explicit CsvTable(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    if (!std::getline(file, line)) {
      throw std::runtime_error("cannot read " + path);
    }
    header_ = Split(line);
    while (std::getline(file, line)) {
      rows_.push_back(Split(line));
      if (rows_.back().size() != header_.size()) {
        throw std::runtime_error(path + ": row " + std::to_string(rows_.size()) + " is broken");
      }
    }
  }

  std::vector<std::string> Texts(const std::string& column) const {
    const auto found = std::find(header_.begin(), header_.end(), column);
    if (found == header_.end()) {
      throw std::runtime_error("no column " + column);
    }
    std::vector<std::string> texts;
    for (const auto& row : rows_) {
      texts.push_back(row[static_cast<std::size_t>(found - header_.begin())]);
    }
    return texts;
  }

  /// An empty cell is system-missing.
  std::vector<double> Numbers(const std::string& column) const {
    std::vector<double> numbers;
    for (const std::string& text : Texts(column)) {
      numbers.push_back(text.empty() ? MCMV::gMissingValue : std::stod(text));
    }
    return numbers;
  }

 private:
  static std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> cells(1);
    for (const char character : line) {
      if (character == ',') {
        cells.emplace_back();
      } else if (character != '"') {
        cells.back() += character;
      }
    }
    return cells;
  }

  std::vector<std::string> header_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace mcbinning_tests

#endif
