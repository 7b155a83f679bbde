#ifndef MCBINNING_DATA_ROW_KEY_H
#define MCBINNING_DATA_ROW_KEY_H

#include <bit>
#include <cstdint>
#include <limits>

namespace MCBinning {

/// An integer that orders values as the rows are ordered: ascending, NaN after all numbers. -0.0
/// has the key of 0.0, and every NaN has one and the same key.
using RowKey = std::uint64_t;

constexpr RowKey kSignBit = RowKey{1} << 63;
constexpr RowKey kZeroKey = kSignBit;

inline RowKey keyOf(double value) {
  if (value != value) {
    value = std::numeric_limits<double>::quiet_NaN();
  }
  // Adding 0.0 turns -0.0 into 0.0. Negative numbers ascend when all their bits are turned round.
  const auto bits = std::bit_cast<RowKey>(value + 0.0);
  return (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
}

inline double valueOf(RowKey key) {
  return std::bit_cast<double>((key & kSignBit) != 0 ? key & ~kSignBit : ~key);
}

/// Whether two rows carry one value; a NaN is never the value of another row.
inline bool isSameValue(RowKey left, RowKey right) {
  constexpr RowKey kInfinity = std::bit_cast<RowKey>(std::numeric_limits<double>::infinity());
  return left == right && left <= (kInfinity | kSignBit);
}

}  // namespace MCBinning

#endif
