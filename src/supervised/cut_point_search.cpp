#include "supervised/cut_point_search.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

#include "numerics/log2.h"
#include "numerics/power_of_3.h"
#include "status/status_codes.h"
#include "supervised/running_counts.h"
#include "supervised/split_scan.h"

namespace MCBinning {
namespace {

struct Interval {
  std::size_t first;
  std::size_t last;
};

double categoriesPresent(const ClassCounts& counts) {
  return static_cast<double>(
      std::count_if(counts.begin() + 1, counts.end(), [](double weight) { return weight != 0.0; }));
}

/// The bits that tell which of the subsets of `k` categories are present on the sides.
double codingBits(double k) { return roundedLog2(powerOf3(static_cast<std::size_t>(k)) - 2.0); }

/// Whether the test may accept a split whose entropy is greater than `leastEntropy` and whose sides
/// hold at least what `least` says.
///
/// The sides' entropies, weighted by their shares, add up to the entropy E of the split, so
/// k1 Ent(left) + k2 Ent(right) is at least min(k1, k2) E, divided by the greater share. With that,
/// what the test asks for is a concave function of k1 and k2, least at a corner.
bool canBeWorthwhile(const ClassCounts& total, const SplitCounts& least, double leastEntropy) {
  constexpr double kRounding = 1e-9;  // in bits; that of sums below 2^13 is less than 2^-36
  const double n = total[0];
  const double entropy = entropyOf(total);
  const double k = categoriesPresent(total);
  const double greaterShare = (n - std::min(least.left[0], least.right[0])) / n;
  const double keptPerCategory = std::max(leastEntropy, 0.0) / greaterShare;
  double leastDelta = std::numeric_limits<double>::infinity();
  for (const double k1 : {std::max(categoriesPresent(least.left), 1.0), k}) {
    for (const double k2 : {std::max(categoriesPresent(least.right), 1.0), k}) {
      leastDelta = std::min(leastDelta, codingBits(k1 + k2) - (k1 + k2) * entropy +
                                            std::min(k1, k2) * keptPerCategory);
    }
  }
  return !(entropy - leastEntropy <= (roundedLog2(n - 1.0) + leastDelta - kRounding) / n);
}

class Search {
 public:
  Search(const CandidateTable& table, RunningCounts& counts)
      : table_(table), counts_(counts), scan_(table, counts) {}

  /// In no particular order.
  std::vector<double> Run() {
    std::vector<Interval> pending;
    if (table_.Size() > 0) {
      pending.push_back({0, table_.Size() - 1});
    }
    while (!pending.empty()) {
      const Interval interval = pending.back();
      pending.pop_back();
      const BestSplit split = FindSplit(interval);
      if (split.isAccepted) {
        cutPoints_.push_back(table_.CutPointIn(split.gap));
        pending.push_back({interval.first, split.gap - 1});
        pending.push_back({split.gap, interval.last});
      }
    }
    return std::move(cutPoints_);
  }

  BestSplit FindSplit(const Interval& interval) {
    if (interval.first == interval.last) {
      return {};
    }
    counts_.Start(interval.first, interval.last);
    const SplitScan::Split split = scan_.FindBest(interval.first, interval.last);
    BestSplit best{split.gap, split.found, false};
    if (split.found && split.gap != interval.last + 1 &&
        !std::isnan(table_.CutPointIn(split.gap))) {
      CountSides(interval, split.gap);
      best.isAccepted =
          isSplitWorthwhile(counts_.Total(), sides_.left, sides_.right, split.entropy);
    }
    return best;
  }

  SplitOutlook Foresee() {
    counts_.Start(0, table_.Size() - 1);
    const SplitScan::Bounds bounds = scan_.BoundStretches(0, table_.Size() - 1);
    SplitOutlook outlook;
    SplitCounts begin;
    SplitCounts end;
    for (std::size_t candidate = 0; candidate < table_.Size(); ++candidate) {
      const double least = bounds.leastEntropies[candidate];
      if (!(least > bounds.greatestBest)) {
        outlook.open.push_back(candidate);
        counts_.At(candidate, begin);
        counts_.At(candidate + 1, end);
        outlook.canBeAccepted = outlook.canBeAccepted ||
                                canBeWorthwhile(counts_.Total(), {begin.left, end.right}, least);
      }
    }
    return outlook;
  }

 private:
  void CountSides(const Interval& interval, std::size_t gap) {
    const bool leftIsNearer = gap - 1 <= interval.first + (interval.last - interval.first) / 2;
    ClassCounts& nearer = leftIsNearer ? sides_.left : sides_.right;
    ClassCounts& other = leftIsNearer ? sides_.right : sides_.left;
    if (leftIsNearer) {
      counts_.Sum(interval.first, gap - 1, nearer);
    } else {
      counts_.Sum(gap, interval.last, nearer);
    }
    const ClassCounts& total = counts_.Total();
    other.resize(total.size());
    std::transform(total.begin(), total.end(), nearer.begin(), other.begin(), std::minus<>());
  }

  const CandidateTable& table_;
  RunningCounts& counts_;
  SplitScan scan_;
  SplitCounts sides_;
  std::vector<double> cutPoints_;
};

/// The number of candidates before the first one that lies beyond a cut point.
std::size_t candidatesUpTo(double cutPoint, const CandidateTable& table) {
  std::size_t first = 0;
  std::size_t last = table.Size();
  while (first < last) {
    const std::size_t middle = first + (last - first) / 2;
    if (table.CutPointIn(middle + 1) <= cutPoint) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return first;
}

/// Fills in the class counts of the bins that the cut points make of the candidates.
void countBins(const CandidateTable& table, const RunningCounts& counts, Bins& bins) {
  bins.width = table.GetNCategories() + 1;
  bins.counts.assign((bins.cutPoints.size() + 1) * bins.width, 0.0);
  ClassCounts ofBin;
  std::size_t begin = 0;
  for (std::size_t bin = 0; bin <= bins.cutPoints.size(); ++bin) {
    const std::size_t end =
        bin < bins.cutPoints.size() ? candidatesUpTo(bins.cutPoints[bin], table) : table.Size();
    if (begin < end) {
      counts.Sum(begin, end - 1, ofBin);
      ofBin[0] = std::accumulate(ofBin.begin() + 1, ofBin.end(), 0.0);
      std::copy(ofBin.begin(), ofBin.end(), bins.counts.data() + bin * bins.width);
    }
    begin = end;
  }
}

}  // namespace

bool isSplitWorthwhile(const ClassCounts& total, const ClassCounts& left, const ClassCounts& right,
                       double splitEntropy) {
  const double n = total[0];
  const double k1 = categoriesPresent(left);
  const double k2 = categoriesPresent(right);
  const double k = k1 + k2;
  const double entropy = entropyOf(total);
  const double delta = codingBits(k) - (k * entropy - k1 * entropyOf(left) - k2 * entropyOf(right));
  return entropy - splitEntropy > roundedLog2(n - 1.0) / n + delta / n;
}

MCStatus searchCutPoints(const CandidateTable& table, Bins& bins) {
  bins = Bins();
  if (!table.IsConsistent()) {
    return errorStatus(kInconsistentTable);
  }
  RunningCounts counts(table);
  bins.cutPoints = Search(table, counts).Run();
  // Overflowing midpoints can make two pre-bins share a boundary value.
  std::sort(bins.cutPoints.begin(), bins.cutPoints.end());
  bins.cutPoints.erase(std::unique(bins.cutPoints.begin(), bins.cutPoints.end()),
                       bins.cutPoints.end());
  countBins(table, counts, bins);
  return bins.cutPoints.empty() ? warningStatus(kNoSplit) : MCStatus();
}

BestSplit findBestSplit(const CandidateTable& table) {
  RunningCounts counts(table);
  return Search(table, counts).FindSplit({0, table.Size() - 1});
}

SplitOutlook foreseeBestSplit(const CandidateTable& table) {
  RunningCounts counts(table);
  return Search(table, counts).Foresee();
}

}  // namespace MCBinning
