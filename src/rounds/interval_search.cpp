// The search goes as the ordinary one does, interval by interval, over pieces instead of values.
//
//     values    . . .   .   .[........]. ..[......]..  . .[...........]  .
//                            a stretch
//
// The class counts at its two ends bound the entropy at every gap inside a stretch, ends
// included, and what is evaluated at the borders of the pieces shows how good the best split is at
// least. A stretch whose bound lies above that is left alone. The others are asked for, in parts
// or value by value, until nothing but values is left of them. Then the best split of the pieces is
// the best split of the values: it lies between two values, and whatever lies in or at a
// stretch that was left alone is worse, also where the scan evaluates it in place of the values.
//
// What is still in doubt is whether a scan of the values examines that gap: inside a run of values
// of one class it is left out, and where a stretch comes before the lower of its two values, the
// last value there decides. Then that stretch is asked for as well.
#include "rounds/interval_search.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "supervised/candidate_table.h"
#include "supervised/cut_point_search.h"

namespace MCBinning {
namespace {

std::vector<std::size_t> stretchesAmong(const PieceTable& pieces) {
  std::vector<std::size_t> stretches;
  for (std::size_t piece = 0; piece < pieces.Size(); ++piece) {
    if (pieces[piece].IsStretch()) {
      stretches.push_back(piece);
    }
  }
  return stretches;
}

double weightOf(const std::vector<std::size_t>& some, const PieceTable& pieces) {
  double weight = 0.0;
  for (const std::size_t piece : some) {
    weight += pieces[piece].weight;
  }
  return weight;
}

bool carriesOneClass(const PieceTable& pieces, std::size_t piece, std::uint32_t code) {
  const auto weights = pieces.ClassWeights(piece);
  return weights.size() == 1 && weights[0].code == code;
}

/// Whether only the values of the stretch before the piece before a gap can tell if it is examined.
bool isInDoubt(const PieceTable& pieces, std::size_t gap) {
  if (gap < 2 || !pieces[gap - 2].IsStretch()) {
    return false;
  }
  const auto weights = pieces.ClassWeights(gap - 1);
  return weights.size() == 1 &&
         (gap == pieces.Size() || carriesOneClass(pieces, gap, weights[0].code));
}

/// The stretches without whose values it is not known whether and where an interval is split. None
/// when it is known; `split` is then the best one.
std::vector<std::size_t> findMissing(const CandidateTable& table, const PieceTable& pieces,
                                     BestSplit& split) {
  SplitOutlook outlook = foreseeBestSplit(table);
  if (!outlook.canBeAccepted) {
    return {};
  }
  std::vector<std::size_t> missing = std::move(outlook.open);
  std::erase_if(missing, [&](std::size_t piece) { return !pieces[piece].IsStretch(); });
  if (missing.empty()) {
    split = findBestSplit(table);
    if (split.isFound && isInDoubt(pieces, split.gap)) {
      missing.push_back(split.gap - 2);
    }
  }
  return missing;
}

}  // namespace

IntervalSearch::IntervalSearch(const PieceTable& pieces, std::size_t nCategories,
                               bool rightBorderClosed, const RoundLimits& limits)
    : PieceSearch(limits), nCategories_(nCategories), rightBorderClosed_(rightBorderClosed) {
  Search({pieces});
}

void IntervalSearch::Search(std::vector<PieceTable> intervals) {
  for (PieceTable& interval : intervals) {
    std::vector<PieceTable> pending;
    pending.push_back(std::move(interval));
    while (!pending.empty()) {
      PieceTable next = std::move(pending.back());
      pending.pop_back();
      SearchOne(std::move(next), pending);
    }
  }
}

/// Ends with a bin, with bins, with a wish, or with two halves in `pending`, the lower one last.
void IntervalSearch::SearchOne(PieceTable interval, std::vector<PieceTable>& pending) {
  std::vector<std::size_t> missing = stretchesAmong(interval);
  if (missing.empty()) {
    SearchValues(interval);
    return;
  }
  const ClassCounts counts = interval.Count(nCategories_);
  if (std::count(counts.begin() + 1, counts.end(), 0.0) + 1 ==
      static_cast<std::ptrdiff_t>(nCategories_)) {
    FileBin(interval);  // with a single class no gap is examined
    return;
  }
  SortedRows rows(interval.Rows());
  const CandidateTable table = CandidateTable::FromRows(rows, nCategories_, rightBorderClosed_);
  BestSplit split;
  if (weightOf(missing, interval) > Limits().mostFetched) {
    missing = findMissing(table, interval, split);
  }
  if (!missing.empty()) {
    wishFor(missing, Limits(), interval);
    Wait(std::move(interval));
  } else if (!split.isAccepted) {
    FileBin(interval);
  } else {
    cutPoints_.push_back(table.CutPointIn(split.gap));
    pending.push_back(interval.Part(split.gap, interval.Size()));
    pending.push_back(interval.Part(0, split.gap));
  }
}

void IntervalSearch::SearchValues(const PieceTable& values) {
  SortedRows rows(values.Rows());
  Bins bins;
  searchCutPoints(CandidateTable::FromRows(rows, nCategories_, rightBorderClosed_), bins);
  for (std::size_t bin = 0; bin < bins.Size(); ++bin) {
    const ClassCountsView counts = bins.Counts(bin);
    bins_.push_back({bin == 0 ? values[0].low : bins.cutPoints[bin - 1],
                     ClassCounts(counts.begin(), counts.end())});
  }
  cutPoints_.insert(cutPoints_.end(), bins.cutPoints.begin(), bins.cutPoints.end());
}

void IntervalSearch::FileBin(const PieceTable& pieces) {
  bins_.push_back({pieces[0].low, pieces.Count(nCategories_)});
}

Bins IntervalSearch::TakeBins() {
  std::sort(cutPoints_.begin(), cutPoints_.end());
  // A bin of one value begins where the next bin of its interval does.
  std::stable_sort(bins_.begin(), bins_.end(), [](const FoundBin& left, const FoundBin& right) {
    return left.from < right.from;
  });
  Bins bins;
  bins.cutPoints = std::move(cutPoints_);
  bins.width = nCategories_ + 1;
  for (const FoundBin& bin : bins_) {
    bins.counts.insert(bins.counts.end(), bin.counts.begin(), bin.counts.end());
  }
  return bins;
}

}  // namespace MCBinning
