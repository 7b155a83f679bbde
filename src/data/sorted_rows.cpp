#include "data/sorted_rows.h"

#include <algorithm>
#include <cmath>

namespace MCBinning {
namespace {

bool isBefore(const SortedRows::Row& left, const SortedRows::Row& right) {
  return left.value < right.value || (std::isnan(right.value) && !std::isnan(left.value));
}

}  // namespace

SortedRows::SortedRows() = default;

SortedRows::SortedRows(const std::vector<Row>& sortedRows) : rows_(sortedRows) {}

void SortedRows::Restart(std::size_t rows) {
  rows_.clear();
  rows_.reserve(rows);
}

void SortedRows::Sort() { std::stable_sort(rows_.begin(), rows_.end(), isBefore); }

}  // namespace MCBinning
