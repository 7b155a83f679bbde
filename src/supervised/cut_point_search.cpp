#include "supervised/cut_point_search.h"

#include <algorithm>
#include <cmath>
#include <functional>
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

/// The minimum-description-length test, with the number of categories of the two sides added up
/// where the published form has the number of categories of the whole.
bool isSplitWorthwhile(const ClassCounts& total, const ClassCounts& left, const ClassCounts& right,
                       double splitEntropy) {
  const double n = total[0];
  const double k1 = categoriesPresent(left);
  const double k2 = categoriesPresent(right);
  const double k = k1 + k2;
  const double codings = PowerOf3(static_cast<std::size_t>(k));
  const double entropy = Entropy(total);
  const double delta =
      Log2(codings - 2.0) - (k * entropy - k1 * Entropy(left) - k2 * Entropy(right));
  return entropy - splitEntropy > Log2(n - 1.0) / n + delta / n;
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
      std::size_t gap = 0;
      if (FindSplit(interval, gap)) {
        cutPoints_.push_back(table_.CutPointAfter(gap - 1));
        pending.push_back({interval.first, gap - 1});
        pending.push_back({gap, interval.last});
      }
    }
    return std::move(cutPoints_);
  }

 private:
  /// Sets `gap` to the candidate that the right part begins with.
  bool FindSplit(const Interval& interval, std::size_t& gap) {
    if (interval.first == interval.last) {
      return false;
    }
    counts_.Start(interval.first, interval.last);
    const SplitScan::Split split = scan_.FindBest(interval.first, interval.last);
    if (!split.found || split.gap == interval.last + 1 ||
        std::isnan(table_.CutPointAfter(split.gap - 1))) {
      return false;
    }
    CountSides(interval, split.gap);
    gap = split.gap;
    return isSplitWorthwhile(counts_.Total(), sides_.left, sides_.right, split.entropy);
  }

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
    if (table.CutPointAfter(middle) <= cutPoint) {
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

MCStatus SearchCutPoints(const CandidateTable& table, Bins& bins) {
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

}  // namespace MCBinning
