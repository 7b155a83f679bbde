#include "data/column_buffer.h"

#include <mccomvor/missing_value.h>

#include <new>

namespace MCBinning {

bool ColumnBuffer::Allocate(std::size_t columns, std::uint32_t capacity) {
  columns_.clear();
  capacity_ = capacity;
  try {
    values_ = std::make_unique_for_overwrite<double[]>(columns * capacity);
    columns_.resize(columns);
  } catch (const std::bad_alloc&) {
    values_.reset();
    return false;
  }
  Reset();
  return true;
}

void ColumnBuffer::Reset() {
  double* first = values_.get();
  for (Column& column : columns_) {
    column = {first, first + capacity_};
    first = column.end;
  }
  isFull_ = false;
}

double ColumnBuffer::At(std::size_t column, std::size_t row) const {
  return column < Columns() && row < Count(column) ? Values(column)[row] : MCMV::gMissingValue;
}

}  // namespace MCBinning
