#ifndef MCBINNING_ROUNDS_CELL_INDEX_H
#define MCBINNING_ROUNDS_CELL_INDEX_H

#include <algorithm>
#include <cstddef>
#include <vector>

#include "data/row_key.h"

namespace MCBinning {

/// Finds the cell of a value among those that borders make: cell 2 n + 1 is border n, cell 2 n what
/// lies before it.
class CellIndex {
 public:
  /// `borders` ascend strictly.
  explicit CellIndex(const std::vector<double>& borders) : keys_(borders.size()) {
    std::transform(borders.begin(), borders.end(), keys_.begin(), keyOf);
  }

  std::size_t Size() const { return 2 * keys_.size() + 1; }

  /// `value` is no NaN.
  std::size_t CellOf(double value) const {
    const RowKey key = keyOf(value);
    const auto border = std::lower_bound(keys_.begin(), keys_.end(), key);
    const auto before = static_cast<std::size_t>(border - keys_.begin());
    return 2 * before + (border != keys_.end() && *border == key ? 1 : 0);
  }

 private:
  std::vector<RowKey> keys_;
};

}  // namespace MCBinning

#endif
