#include "toolkit/fit/column_cases.h"

#include <fmt/format.h>

#include <utility>

namespace mcbin {

ColumnCases::ColumnCases(BatchReader& reader, const std::vector<std::string>& naTexts,
                         std::string place)
    : reader_(reader), cells_(naTexts), place_(std::move(place)) {
  for (const ColumnHead& head : reader.Heads()) names_.push_back(head.name);
}

void ColumnCases::Rewind() {
  reader_.Rewind();
  batch_ = {};
  row_ = 0;
}

bool ColumnCases::NextCase() {
  if (row_ + 1 < batch_.rows) {
    ++row_;
    return true;
  }
  do {
    batch_.rows = 0;
    if (!reader_.NextBatch(batch_)) return false;
  } while (batch_.rows == 0);
  row_ = 0;
  return true;
}

std::string ColumnCases::Where() const {
  return place_.empty() ? fmt::format("row {}", batch_.firstRow + row_) : place_;
}

double ColumnCases::ShareRead() const {
  const std::uint64_t rows = reader_.Rows();
  return rows == 0 ? -1.0 : static_cast<double>(batch_.firstRow + row_) / static_cast<double>(rows);
}

}  // namespace mcbin
