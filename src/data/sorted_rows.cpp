#include "data/sorted_rows.h"

#include <algorithm>

#include "data/value_counts.h"

namespace MCBinning {
namespace {

/// With fewer cases a look for few distinct values does not pay.
constexpr std::size_t kManyCases = std::size_t{1} << 16;

}  // namespace

SortedRows::SortedRows(const std::vector<Row>& sortedRows)
    : size_(sortedRows.size()),
      room_(sortedRows.size()),
      wide_(std::make_unique<WideRow[]>(sortedRows.size())) {
  std::transform(sortedRows.begin(), sortedRows.end(), wide_.get(), [](const Row& row) {
    return WideRow{KeyOf(row.value), row.weight, static_cast<std::uint32_t>(row.code)};
  });
  const auto zero = std::find_if(sortedRows.begin(), sortedRows.end(),
                                 [](const Row& row) { return row.value == 0.0; });
  zero_ = zero == sortedRows.end() ? 0.0 : zero->value;
}

std::size_t SortedRows::Fill(const CaseColumns& cases, std::size_t nCategories, bool wholeWeights) {
  size_ = 0;
  if (room_ < cases.values.size() || isPacked_ != wholeWeights) {
    room_ = 0;
    packed_.reset();
    wide_.reset();
    if (wholeWeights) {
      packed_ = std::make_unique_for_overwrite<PackedRow[]>(cases.values.size());
    } else {
      wide_ = std::make_unique_for_overwrite<WideRow[]>(cases.values.size());
    }
    isPacked_ = wholeWeights;
    room_ = cases.values.size();
  }
  RowCounts counts;
  if (!isPacked_) {
    counts = RowOrder<WideRow>().Fill(cases, wide_.get());
  } else {
    ValueCounts fewValues(nCategories);
    counts = cases.values.size() >= kManyCases && fewValues.Count(cases)
                 ? fewValues.WriteRows(packed_.get())
                 : RowOrder<PackedRow>().Fill(cases, packed_.get());
  }
  size_ = counts.rows;
  const auto zero = std::find(cases.values.begin(), cases.values.end(), 0.0);
  zero_ = zero == cases.values.end() ? 0.0 : *zero;
  return counts.distinctValues;
}

void SortedRows::Merge() {
  if (!isPacked_) {
    size_ = MergeRows(std::span<const WideRow>(wide_.get(), size_), wide_.get()).rows;
  }
}

}  // namespace MCBinning
