/// Columns of numbers in batches.
#ifndef MCBIN_TESTS_TOOLKIT_SUPPORT_MEMORY_BATCHES_H
#define MCBIN_TESTS_TOOLKIT_SUPPORT_MEMORY_BATCHES_H

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/columns/column.h"
#include "toolkit/columns/number_columns.h"

namespace mcbin::testing {

class MemoryBatches : public BatchReader {
 public:
  MemoryBatches(const std::vector<std::string>& names, std::vector<std::vector<double>> columns,
                std::size_t rowsOfBatch)
      : columns_(std::move(columns)), rowsOfBatch_(rowsOfBatch) {
    for (const std::string& name : names) heads_.push_back({name, "", true});
  }

  const std::vector<ColumnHead>& Heads() const override { return heads_; }
  bool NextBatch(ColumnBatch& batch) override {
    if (next_ >= columns_.front().size()) return false;
    batch = {};
    batch.firstRow = next_;
    batch.rows = std::min(rowsOfBatch_, columns_.front().size() - next_);
    for (const std::vector<double>& column : columns_) {
      batch.columns.push_back(std::make_unique<NumberColumn<double>>(column.data() + next_,
                                                                     sizeof(double), Validity()));
    }
    next_ += batch.rows;
    return true;
  }
  void Rewind() override {
    next_ = 0;
    ++passes;
  }
  std::uint64_t Rows() const override { return 0; }

  std::vector<std::vector<double>>& Columns() { return columns_; }
  ColumnHead& Head(std::size_t column) { return heads_[column]; }

  int passes = 0;  ///< How often it was rewound.

 private:
  std::vector<ColumnHead> heads_;
  std::vector<std::vector<double>> columns_;
  std::size_t rowsOfBatch_;
  std::size_t next_ = 0;
};

}  // namespace mcbin::testing

#endif
