#ifndef MCBINNING_SUPERVISED_SPLIT_SCAN_H
#define MCBINNING_SUPERVISED_SPLIT_SCAN_H

#include <cstddef>

#include "supervised/candidate_table.h"

namespace MCBinning {

/// Finds the best split of an interval of candidates.
class SplitScan {
 public:
  /// The left part of a split runs from the interval's first candidate to `position`; the right
  /// part is empty when that is the interval's last candidate.
  struct Split {
    std::size_t position = 0;
    double entropy = 0.0;  // weighted, of the two parts
    bool found = false;
  };

  /// `table` is borrowed and must outlive the scan.
  explicit SplitScan(const CandidateTable& table);

  /// The examined position with the least weighted entropy, the first one among equals; a position
  /// whose entropy is NaN never wins. `total` holds the class counts of the whole interval, which
  /// has at least two candidates. The running counts start from zeros on the left and `total` on
  /// the right, and each position first adds its candidate to the left, then takes it from the
  /// right.
  Split FindBest(std::size_t first, std::size_t last, const ClassCounts& total);

 private:
  bool IsPure(std::size_t candidate) const;

  const CandidateTable& table_;
  ClassCounts left_;
  ClassCounts right_;
};

}  // namespace MCBinning

#endif
