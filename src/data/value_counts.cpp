#include "data/value_counts.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <bit>
#include <numeric>

namespace MCBinning {
namespace {

// Both tables fit into the second-level cache: 16 bytes a slot, of which half stay free, 4 bytes a
// count.
constexpr std::size_t kMostValues = std::size_t{1} << 14;
constexpr std::size_t kMostCounts = std::size_t{1} << 17;

// With fewer cases of each value, to find out in vain that values are many would cost too much.
constexpr std::size_t kCasesPerValue = 16;

}  // namespace

ValueCounts::ValueCounts(std::size_t nCategories, std::size_t nCases)
    : nCategories_(nCategories),
      mostValues_(std::min({kMostValues, kMostCounts / nCategories, nCases / kCasesPerValue})),
      slots_(std::bit_ceil(std::max(2 * mostValues_, std::size_t{2}))),
      slotShift_(64 - std::countr_zero(slots_.size())) {}

/// The slot of a key, or the free one where it belongs.
std::size_t ValueCounts::FindSlot(RowKey key) const {
  // The golden ratio's bits spread keys that differ in few bits, as those of whole numbers do.
  std::size_t slot = (key * 0x9E3779B97F4A7C15U) >> slotShift_;
  while (slots_[slot].key != key && slots_[slot].key != 0) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

bool ValueCounts::Count(const CaseColumns& cases) {
  const double missing = MCMV::gMissingValue;
  for (std::size_t i = 0; i < cases.values.size(); ++i) {
    const double cell = cases.values[i];
    if (cell == missing) {
      continue;
    }
    const RowKey key = keyOf(cell);
    Slot& slot = slots_[FindSlot(key)];
    if (slot.key == 0) {
      if (keys_.size() == mostValues_ || cell != cell) {
        return false;
      }
      slot = {key, static_cast<std::uint32_t>(keys_.size())};
      keys_.push_back(key);
      counts_.resize(counts_.size() + nCategories_, 0);
    }
    const std::size_t code = cases.codes != nullptr ? cases.codes[i] : 0;
    counts_[slot.value * nCategories_ + code] +=
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
