#ifndef MCBINNING_TESTS_SUPPORT_PLAIN_SPLIT_SCAN_H
#define MCBINNING_TESTS_SUPPORT_PLAIN_SPLIT_SCAN_H

#include <cstddef>
#include <limits>

#include "supervised/candidate_table.h"
#include "supervised/entropy.h"
#include "supervised/split_scan.h"
#include "support/candidate_entries.h"

namespace mcbinning_tests {

/// The best split by its definition: every position in turn.
inline MCBinning::SplitScan::Split plainBestSplit(const MCBinning::CandidateTable& table,
                                                  std::size_t first, std::size_t last) {
  MCBinning::ClassCounts right;
  table.Sum(first, last, right);
  MCBinning::ClassCounts left(right.size(), 0.0);
  MCBinning::SplitScan::Split best;
  best.entropy = std::numeric_limits<double>::infinity();
  bool carry = false;
  bool pure = false;
  for (std::size_t position = first; position <= last; ++position) {
    table.AddTo(left, position, position + 1);
    table.SubtractFrom(right, position, position + 1);
    bool examined = !pure;  // the last position follows the one before it
    if (position < last) {
      const auto codes = codesOf(table, position);
      const auto nextCodes = codesOf(table, position + 1);
      pure = codes.size() == 1 && nextCodes.size() == 1 && codes[0] == nextCodes[0];
      examined = !pure || carry;
      carry = !pure;
    }
    if (examined) {
      const double entropy = MCBinning::WeightedEntropy(left, right);
      if (entropy < best.entropy) {
        best = {position, entropy, true};
      }
    }
  }
  return best;
}

}  // namespace mcbinning_tests

#endif
