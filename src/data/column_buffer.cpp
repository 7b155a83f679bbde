#include "data/column_buffer.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <new>

namespace MCBinning {

bool ColumnBuffer::Allocate(std::size_t columns, std::uint32_t capacity) {
  counts_.clear();
  capacity_ = capacity;
  isFull_ = false;
  try {
    values_ = std::make_unique_for_overwrite<double[]>(columns * capacity);
    counts_.assign(columns, 0);
  } catch (const std::bad_alloc&) {
    values_.reset();
    return false;
  }
  return true;
}

void ColumnBuffer::Reset() {
  std::fill(counts_.begin(), counts_.end(), 0U);
  isFull_ = false;
}

double ColumnBuffer::At(std::size_t column, std::size_t row) const {
  return column < Columns() && row < Count(column) ? Values(column)[row] : MCMV::gMissingValue;
}

}  // namespace MCBinning
