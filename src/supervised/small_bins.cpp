#include "supervised/small_bins.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <vector>

namespace MCBinning {
namespace {

ClassCounts sumOf(ClassCountsView a, ClassCountsView b) {
  ClassCounts sum(a.size());
  std::transform(a.begin(), a.end(), b.begin(), sum.begin(), std::plus<>());
  return sum;
}

bool isSmall(double threshold, ClassCountsView left, ClassCountsView bin, ClassCountsView right) {
  const double lighter = left[0] > right[0] ? right[0] : left[0];
  return threshold * lighter > bin[0];
}

bool mergesLeft(ClassCountsView left, ClassCountsView bin, ClassCountsView right) {
  const double leftMerge = weightedEntropy(sumOf(left, bin), right);
  const double rightMerge = weightedEntropy(left, sumOf(bin, right));
  return rightMerge >= leftMerge;
}

/// The left bin of each pair to merge, in ascending order of the small bins.
std::vector<std::size_t> findMerges(double threshold, const Bins& bins) {
  std::vector<std::size_t> merges;
  for (std::size_t i = 1; i + 1 < bins.Size(); ++i) {
    const ClassCountsView left = bins.Counts(i - 1);
    const ClassCountsView bin = bins.Counts(i);
    const ClassCountsView right = bins.Counts(i + 1);
    if (isSmall(threshold, left, bin, right)) {
      merges.push_back(mergesLeft(left, bin, right) ? i - 1 : i);
    }
  }
  return merges;
}

/// Copies bins to the front of the same table, folding as it goes: one pass for any number of
/// merges.
class BinFolder {
 public:
  explicit BinFolder(Bins& bins) : bins_(bins) {}

  void KeepNext() {
    if (kept_ > 0) {
      bins_.cutPoints[kept_ - 1] = bins_.cutPoints[next_ - 1];
    }
    if (kept_ != next_) {
      std::copy_n(At(next_), bins_.width, At(kept_));
    }
    ++kept_;
    ++next_;
  }

  /// Adds the last kept bin to the one before it and drops the cut point between them.
  void FoldLast() {
    --kept_;
    std::transform(At(kept_ - 1), At(kept_), At(kept_), At(kept_ - 1), std::plus<>());
  }

  void Finish() {
    while (next_ < bins_.Size()) {
      KeepNext();
    }
    bins_.counts.resize(kept_ * bins_.width);
    bins_.cutPoints.resize(kept_ - 1);
  }

  std::size_t Kept() const { return kept_; }

 private:
  std::vector<double>::iterator At(std::size_t bin) {
    return bins_.counts.begin() + static_cast<std::ptrdiff_t>(bin * bins_.width);
  }

  Bins& bins_;
  std::size_t kept_ = 0;
  std::size_t next_ = 0;
};

}  // namespace

void mergeSmallBins(double threshold, Bins& bins) {
  if (!(threshold > 0.0) || bins.cutPoints.size() < 2) {
    return;
  }
  BinFolder folder(bins);
  std::size_t merged = 0;
  for (const std::size_t merge : findMerges(threshold, bins)) {
    const std::size_t left = merge - merged;  // each merge so far took one bin out before it
    while (folder.Kept() < left + 2) {
      folder.KeepNext();
    }
    folder.FoldLast();
    ++merged;
  }
  folder.Finish();
}

}  // namespace MCBinning
