#include "data/sorted_rows.h"

#include <algorithm>
#include <cmath>

#include "data/value_counts.h"

namespace MCBinning {
namespace {

/// With fewer cases a look for few distinct values does not pay (measured).
constexpr std::size_t kManyCases = std::size_t{1} << 16;

template <typename PlacedRow>
PlacedRow placed(const SortedRows::Row& row) {
  return {keyOf(row.value), static_cast<typename PlacedRow::WeightType>(row.weight),
          static_cast<std::uint32_t>(row.code)};
}

template <typename PlacedRow>
void addWeights(std::span<const PlacedRow> rows, double sign, std::span<double> counts) {
  double total = counts[0];
  for (const PlacedRow& row : rows) {
    const double weight = sign * static_cast<double>(row.weight);
    counts[row.code + 1] += weight;
    total += weight;
  }
  counts[0] = total;
}

bool areWholeWithSumBelow(double firstTooGreat, std::span<const double> weights) {
  double sum = 0.0;
  bool areWhole = true;
  for (const double weight : weights) {
    sum += weight;
    areWhole = areWhole && weight >= 1.0 && weight == std::floor(weight);
  }
  return areWhole && sum < firstTooGreat;
}

}  // namespace

bool arePackable(std::span<const double> weights) { return areWholeWithSumBelow(0x1p32, weights); }

SortedRows::SortedRows(const std::vector<Row>& sortedRows) {
  std::vector<double> weights;
  for (const Row& row : sortedRows) {
    weights.push_back(row.weight);
    codeLimit_ = std::max(codeLimit_, std::size_t{static_cast<std::uint32_t>(row.code)} + 1);
  }
  MakeRoom(sortedRows.size(), arePackable(weights));
  hasExactSums_ = areWholeWithSumBelow(0x1p53, weights);
  if (isPacked_) {
    std::transform(sortedRows.begin(), sortedRows.end(), packed_.get(), placed<PackedRow>);
  } else {
    std::transform(sortedRows.begin(), sortedRows.end(), wide_.get(), placed<WideRow>);
  }
  size_ = sortedRows.size();
  const auto zero = std::find_if(sortedRows.begin(), sortedRows.end(),
                                 [](const Row& row) { return row.value == 0.0; });
  zero_ = zero == sortedRows.end() ? 0.0 : zero->value;
  for (std::size_t row = 0; row < size_; ++row) {
    distinctValues_ += row > 0 && isSameValue(Key(row), Key(row - 1)) ? 0 : 1;
  }
}

void SortedRows::MakeRoom(std::size_t rows, bool isPacked) {
  size_ = 0;
  if (room_ >= rows && isPacked_ == isPacked) {
    return;
  }
  room_ = 0;
  packed_.reset();
  wide_.reset();
  isPacked_ = isPacked;
  if (isPacked) {
    packed_ = std::make_unique_for_overwrite<PackedRow[]>(rows);
  } else {
    wide_ = std::make_unique_for_overwrite<WideRow[]>(rows);
  }
  room_ = rows;
}

void SortedRows::Fill(const CaseColumns& cases, std::size_t nCategories, bool wholeWeights) {
  MakeRoom(cases.values.size(), wholeWeights);
  RowCounts counts;
  if (!isPacked_) {
    counts = RowOrder<WideRow>().Fill(cases, wide_.get());
  } else {
    ValueCounts fewValues(nCategories, cases.values.size());
    counts = cases.values.size() >= kManyCases && fewValues.Count(cases)
                 ? fewValues.WriteRows(packed_.get())
                 : RowOrder<PackedRow>().Fill(cases, packed_.get());
  }
  size_ = counts.rows;
  distinctValues_ = counts.distinctValues;
  codeLimit_ = nCategories;
  isMerged_ = isPacked_;
  hasExactSums_ = isPacked_;
  if (HasZero()) {
    zero_ = *std::find(cases.values.begin(), cases.values.end(), 0.0);
  }
}

bool SortedRows::HasZero() const {
  std::size_t first = 0;
  std::size_t last = size_;
  while (first < last) {
    const std::size_t middle = first + (last - first) / 2;
    if (Key(middle) < kZeroKey) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first < size_ && Key(first) == kZeroKey;
}

void SortedRows::AddWeights(std::size_t first, std::size_t end, double sign,
                            std::span<double> counts) const {
  if (isPacked_) {
    addWeights(std::span<const PackedRow>(packed_.get() + first, end - first), sign, counts);
  } else {
    addWeights(std::span<const WideRow>(wide_.get() + first, end - first), sign, counts);
  }
}

void SortedRows::Merge() {
  if (isMerged_) {
    return;
  }
  size_ = isPacked_
              ? mergeRows(std::span<const PackedRow>(packed_.get(), size_), packed_.get()).rows
              : mergeRows(std::span<const WideRow>(wide_.get(), size_), wide_.get()).rows;
  isMerged_ = true;
}

}  // namespace MCBinning
