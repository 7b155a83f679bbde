#ifndef MCBINNING_DATA_COLUMN_BUFFER_H
#define MCBINNING_DATA_COLUMN_BUFFER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace MCBinning {

/// The values of the cases since the last flush, column after column: column c holds `capacity`
/// doubles from position c * capacity on, of which Count(c) are filled. Columns fill independently
/// of each other.
class ColumnBuffer {
 public:
  /// No columns. Allocate() comes first.
  ColumnBuffer() = default;

  /// Room for `capacity` values in each of `columns` columns, all empty. False when the memory
  /// cannot be had; the buffer then has no columns.
  bool Allocate(std::size_t columns, std::uint32_t capacity);

  std::size_t Columns() const { return columns_.size(); }
  std::uint32_t Capacity() const { return capacity_; }

  /// False, and nothing done, for a column that does not exist. The column must not be full.
  bool Append(std::size_t column, double value) {
    if (column >= columns_.size()) {
      return false;
    }
    Column& filling = columns_[column];
    *filling.next++ = value;
    if (filling.next == filling.end) {
      isFull_ = true;
    }
    return true;
  }

  /// Whether some column has no room left.
  bool IsFull() const { return isFull_; }

  /// Empties every column.
  void Reset();

  std::size_t Count(std::size_t column) const {
    return static_cast<std::size_t>(columns_[column].next - Values(column));
  }

  /// The first of the column's Count(column) values, in the order in which they were appended.
  const double* Values(std::size_t column) const { return values_.get() + column * capacity_; }

  /// One value; the system-missing value for a column or a row that does not exist.
  double At(std::size_t column, std::size_t row) const;

 private:
  struct Column {
    double* next;
    double* end;
  };

  std::uint32_t capacity_ = 0;
  std::unique_ptr<double[]> values_;
  std::vector<Column> columns_;
  bool isFull_ = false;
};

}  // namespace MCBinning

#endif
