#ifndef MCBINNING_DATA_VALUE_COUNTS_H
#define MCBINNING_DATA_VALUE_COUNTS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/row_order.h"

namespace MCBinning {

/// Counts the weight of each category per distinct value in a hash table small enough for the
/// cache: where values are few (ages, ratings, counts), no row needs to be made or ordered.
class ValueCounts {
 public:
  explicit ValueCounts(std::size_t nCategories);

  /// Whole-number weights only. False when the values are too many, which shows early where they
  /// come mixed, or one is NaN.
  bool Count(const CaseColumns& cases);

  /// Writes the merged rows of what was counted, in the tie order (mcbinning.h).
  RowCounts WriteRows(PackedRow* rows) const;

 private:
  struct Slot {
    RowKey key = 0;  // of no value: the least key of all would be that of a NaN
    std::uint32_t value = 0;
  };

  bool FindValue(RowKey key, std::size_t& value);

  std::size_t nCategories_;
  std::size_t mostValues_;
  std::vector<Slot> slots_;
  std::vector<RowKey> keys_;           // in order of first appearance
  std::vector<std::uint32_t> counts_;  // value by value
};

}  // namespace MCBinning

#endif
