#include "data/value_counts.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <numeric>

namespace MCBinning {
namespace {

// Both tables fit into the second-level cache: 16 bytes a slot, 4 bytes a count.
constexpr int kSlotBits = 14;
constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;
constexpr std::size_t kMostCounts = std::size_t{1} << 17;

std::size_t firstSlotOf(RowKey key) {
  // The golden ratio's bits spread keys that differ in few bits, as those of whole numbers do.
  return (key * 0x9E3779B97F4A7C15U) >> (64 - kSlotBits);
}

}  // namespace

ValueCounts::ValueCounts(std::size_t nCategories)
    : nCategories_(nCategories),
      mostValues_(std::min(kSlots / 4, kMostCounts / nCategories)),
      slots_(kSlots) {}

bool ValueCounts::FindValue(RowKey key, std::size_t& value) {
  std::size_t slot = firstSlotOf(key);
  while (slots_[slot].key != key && slots_[slot].key != 0) {
    slot = (slot + 1) % kSlots;
  }
  if (slots_[slot].key == 0) {
    if (keys_.size() == mostValues_) {
      return false;
    }
    slots_[slot] = {key, static_cast<std::uint32_t>(keys_.size())};
    keys_.push_back(key);
    counts_.resize(counts_.size() + nCategories_, 0);
  }
  value = slots_[slot].value;
  return true;
}

bool ValueCounts::Count(const CaseColumns& cases) {
  const double missing = MCMV::gMissingValue;
  for (std::size_t i = 0; i < cases.values.size(); ++i) {
    const double cell = cases.values[i];
    std::size_t value = 0;
    if (cell == missing) {
      continue;
    }
    if (cell != cell || !FindValue(keyOf(cell), value)) {
      return false;
    }
    const std::size_t code = cases.codes != nullptr ? cases.codes[i] : 0;
    counts_[value * nCategories_ + code] +=
        cases.weights != nullptr ? static_cast<std::uint32_t>(cases.weights[i]) : 1;
  }
  return true;
}

RowCounts ValueCounts::WriteRows(PackedRow* rows) const {
  std::vector<std::size_t> order(keys_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [this](std::size_t left, std::size_t right) { return keys_[left] < keys_[right]; });
  RowCounts written{0, order.size()};
  for (const std::size_t value : order) {
    for (std::uint32_t code = 0; code < nCategories_; ++code) {
      const std::uint32_t weight = counts_[value * nCategories_ + code];
      if (weight != 0) {
        rows[written.rows++] = {keys_[value], weight, code};
      }
    }
  }
  return written;
}

}  // namespace MCBinning
