#ifndef MCBINNING_SUPERVISED_RUNNING_COUNTS_H
#define MCBINNING_SUPERVISED_RUNNING_COUNTS_H

#include <cstddef>
#include <vector>

#include "supervised/candidate_table.h"

namespace MCBinning {

/// The class counts of the two parts that a gap makes of an interval; the right part of gap g
/// begins with candidate g.
struct SplitCounts {
  ClassCounts left;
  ClassCounts right;
};

/// The running class counts of a scan over an interval of candidates, to be had at any gap
/// without the scan: the left ones start from zeros and the right ones from the counts of the
/// interval, and candidate by candidate is added to the left, then taken from the right.
///
/// Where sums are exact, one pass over the whole table serves all intervals: a sum at a gap is a
/// difference. With other weights the additions are done in the tie order, once per interval.
/// Either way counts are kept at every 256th candidate.
class RunningCounts {
 public:
  /// `table` is borrowed and must outlive this object.
  explicit RunningCounts(const CandidateTable& table);

  /// Sets the interval, both ends included.
  void Start(std::size_t first, std::size_t last);

  const ClassCounts& Total() const { return total_; }

  /// Whether every sum is exact, in any order.
  bool IsExact() const { return isExact_; }

  /// The class counts of the candidates `first` to `last` of the table, both included: those of the
  /// table's own Sum(), found faster where sums are exact.
  void Sum(std::size_t first, std::size_t last, ClassCounts& counts) const;

  /// The counts at a gap from `first` to `last` + 1 of the interval.
  void At(std::size_t gap, SplitCounts& counts) const;

  /// Moves counts on from one gap to a later one.
  void Move(std::size_t gap, std::size_t later, SplitCounts& counts) const {
    table_.AddTo(counts.left, gap, later);
    table_.SubtractFrom(counts.right, gap, later);
  }

  /// The greatest gap not beyond `gap` at which counts are kept.
  static std::size_t KeptGap(std::size_t gap) { return gap - gap % kBlock; }

 private:
  static constexpr std::size_t kBlock = 256;  // the counts kept take little beside the rows then

  void CountTable();
  void CountInterval();
  void Keep(std::vector<double>& kept, std::size_t gap, const ClassCounts& counts) const;
  void CountBefore(std::size_t gap, ClassCounts& counts) const;

  const CandidateTable& table_;
  bool isExact_;
  std::size_t first_ = 0;
  std::size_t last_ = 0;
  ClassCounts total_;
  ClassCounts before_;             // exact: of all candidates before the interval
  std::vector<double> keptLeft_;   // exact: of all candidates before the gap
  std::vector<double> keptRight_;  // empty when exact
};

}  // namespace MCBinning

#endif
