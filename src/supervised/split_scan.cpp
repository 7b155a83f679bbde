#include "supervised/split_scan.h"

#include <limits>

namespace MCBinning {

SplitScan::SplitScan(const CandidateTable& table) : table_(table) {}

/// Whether this candidate and the next one carry one and the same single category.
bool SplitScan::IsPure(std::size_t candidate) const {
  const auto codes = table_.Codes(candidate);
  const auto nextCodes = table_.Codes(candidate + 1);
  return codes.size() == 1 && nextCodes.size() == 1 && codes[0] == nextCodes[0];
}

SplitScan::Split SplitScan::FindBest(std::size_t first, std::size_t last,
                                     const ClassCounts& total) {
  left_.assign(total.size(), 0.0);
  right_ = total;
  Split best;
  best.entropy = std::numeric_limits<double>::infinity();
  bool carry = false;
  bool pure = false;
  for (std::size_t position = first; position <= last; ++position) {
    table_.AddTo(left_, position);
    table_.SubtractFrom(right_, position);
    bool examined = !pure;  // the last position follows the one before it
    if (position < last) {
      pure = IsPure(position);
      examined = !pure || carry;
      carry = !pure;
    }
    if (examined) {
      const double entropy = WeightedEntropy(left_, right_);
      if (entropy < best.entropy) {
        best = {position, entropy, true};
      }
    }
  }
  return best;
}

}  // namespace MCBinning
