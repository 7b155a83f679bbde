#ifndef MCBINNING_SUPERVISED_SPLIT_SCAN_H
#define MCBINNING_SUPERVISED_SPLIT_SCAN_H

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "supervised/candidate_table.h"
#include "supervised/running_counts.h"

namespace MCBinning {

/// Finds the best split of an interval of candidates without evaluating most of them: the interval
/// is halved again and again, and a part that provably holds no split as good as the best one
/// seen so far is left alone (split_scan.cpp has the scheme). What is
/// evaluated is evaluated as a scan of every gap would, on the same running counts.
class SplitScan {
 public:
  /// The left part of a split ends before the candidate `gap`; the right part is empty when that is
  /// one more than the interval's last candidate.
  struct Split {
    std::size_t gap = 0;
    double entropy = 0.0;  // weighted, of the two parts
    bool found = false;
  };

  /// Both are borrowed and must outlive the scan.
  SplitScan(const CandidateTable& table, const RunningCounts& counts);

  /// The examined gap with the least weighted entropy, the first one among equals; a gap whose
  /// entropy is NaN never wins. `counts` has been started on the interval, which has at least
  /// two candidates.
  Split FindBest(std::size_t first, std::size_t last);

  /// For a table whose candidates may each stand for a stretch of neighbouring values that are not
  /// told apart: what the class counts at the gaps say about the values. Sums must be exact.
  struct Bounds {
    /// Per candidate: less than what is evaluated anywhere inside and at the gaps on both sides;
    /// NaN when nothing is known.
    std::vector<double> leastEntropies;
    double greatestBest;  // the best split of the values is not worse
  };
  Bounds BoundStretches(std::size_t first, std::size_t last);

 private:
  /// A gap and what the bounds of the stretches on both its sides need.
  struct Gap {
    std::size_t at = 0;  // the candidate after it
    SplitCounts counts;
    std::vector<double> terms;  // per category: x log2 x + y log2 y of its shares x left, y right
    double sumOfTerms = 0.0;    // NaN when a count is negative
  };

  /// A tangent of t(L, R) over L, lowered by what rounding can make wrong (split_scan.cpp).
  struct Tangent {
    double atZero;
    double slope;
  };

  void SetInterval(std::size_t first, std::size_t last);
  bool IsPure(std::size_t candidate) const;
  bool IsExamined(std::size_t gap) const;
  void Evaluate(const Gap& gap, const Tangent& tangent);
  void Estimate(const Gap& gap, const Tangent& tangent);
  void Search(const Gap& begin, const Gap& end, const Tangent& tangent, std::size_t depth);
  void ScanAll(const Gap& begin, std::size_t end, const Tangent& tangent);
  void MoveOn(Gap& gap);
  void FillTerms(Gap& gap);
  double Term(const SplitCounts& counts, std::size_t category);
  double TableEntry(double count);
  Tangent TangentBetween(const Gap& begin, const Gap& end) const;
  double LeastEntropyAt(const Gap& gap, const Tangent& tangent) const;
  double LeastEntropy(const Gap& begin, const Gap& end, const Tangent& tangent) const;
  double Slack(const Gap& begin, const Gap& end, double slope) const;
  double SlackOfExactSums() const;

  static constexpr std::size_t kDeepest = 40;  // halvings of 2^32 candidates

  const CandidateTable& table_;
  const RunningCounts& counts_;
  std::size_t first_ = 0;
  std::size_t last_ = 0;
  double weight_ = 0.0;  // of the interval
  double inverseOfWeight_ = 0.0;
  double logOfWeight_ = 0.0;
  double exactSlack_ = 0.0;
  Split best_;
  double limit_ = 0.0;  // the best split is not worse
  std::array<Gap, kDeepest> gaps_;
  Gap running_;
  std::vector<double> logTable_;  // n log2 n, once it was needed; empty where sums are rounded
  double tableEnd_ = -std::numeric_limits<double>::infinity();  // no count in it is as great
};

}  // namespace MCBinning

#endif
