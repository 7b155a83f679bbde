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
  /// Of so many cases.
  ValueCounts(std::size_t nCategories, std::size_t nCases);

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

  std::size_t FindSlot(RowKey key) const;

  std::size_t nCategories_;
  std::size_t mostValues_;
  std::vector<Slot> slots_;   // a power of 2
  int slotShift_;             // leaves of a number as many of the highest bits as slots need
  std::vector<RowKey> keys_;  // in order of first appearance
  std::vector<std::uint32_t> counts_;  // value by value
};

}  // namespace MCBinning

#endif
