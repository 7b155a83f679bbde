/// Which cells of a column have a value.
#ifndef MCBIN_TOOLKIT_COLUMNS_VALIDITY_H
#define MCBIN_TOOLKIT_COLUMNS_VALIDITY_H

#include <cstddef>
#include <cstdint>

namespace mcbin {

/// Bit `at` of a bitmap whose bits count from the lowest of each byte.
inline bool bitAt(const std::uint8_t* bits, std::size_t at) {
  return ((bits[at / 8] >> (at % 8)) & 1U) != 0;
}

/// At most one of the two is there; with neither every cell has a value.
struct Validity {
  const std::uint8_t* bits = nullptr;  ///< A set bit for a value.
  std::size_t firstBit = 0;            ///< Of row 0.
  const std::uint8_t* mask = nullptr;  ///< A byte that is not 0 for a missing cell.

  bool Has(std::size_t row) const {
    if (bits != nullptr) return bitAt(bits, firstBit + row);
    return mask == nullptr || mask[row] == 0;
  }
};

}  // namespace mcbin

#endif
