/// A table held in memory.
#ifndef MCBIN_TESTS_TOOLKIT_SUPPORT_MEMORY_TABLE_H
#define MCBIN_TESTS_TOOLKIT_SUPPORT_MEMORY_TABLE_H

#include <string>
#include <utility>
#include <vector>

#include "toolkit/input/table_reader.h"

namespace mcbin::testing {

class MemoryTable : public TableReader {
 public:
  MemoryTable(std::vector<std::string> names, std::vector<std::vector<std::string>> rows)
      : names_(std::move(names)), rows_(std::move(rows)) {}

  const std::vector<std::string>& ColumnNames() const override { return names_; }

  bool NextRow(TableRow& row) override {
    if (next_ == rows_.size()) return false;
    row.cells.assign(rows_[next_].begin(), rows_[next_].end());
    row.line = ++next_;
    return true;
  }

  void Rewind() override { next_ = 0; }
  std::string Where(const TableRow& row) const override {
    return "table, line " + std::to_string(row.line);
  }
  double ShareRead() const override { return -1.0; }

 private:
  std::vector<std::string> names_;
  std::vector<std::vector<std::string>> rows_;
  std::size_t next_ = 0;
};

}  // namespace mcbin::testing

#endif
