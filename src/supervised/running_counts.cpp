#include "supervised/running_counts.h"

#include <algorithm>
#include <functional>

// Class counts are kept at every 256th gap of the table, whatever the interval; those at a gap are
// the kept ones at or before it, moved on candidate by candidate:
//
//     candidates   0 . . . . . . 255 256 . . . . . . 511 512 . . . . . .
//     kept at      |                 |                   |
//     At(gap)                        |---------> gap        at most 255 candidates are added
//
// Where sums are exact, what is kept counts from the start of the table: one pass serves every
// interval, whose left part is a difference and whose right part is the rest of its total.
//
//     kept[gap] = candidates before gap;   left = kept[gap] - kept[first];   right = total - left
//
// Other sums depend on the tie order (mcbinning.h). A scan adds each candidate to the left and
// takes it from the right, from the first candidate of the interval on, so the same is done here,
// once per interval, and both sides are kept on the way.

namespace MCBinning {
namespace {

void subtract(const ClassCounts& from, const ClassCounts& counts, ClassCounts& difference) {
  difference.resize(from.size());
  std::transform(from.begin(), from.end(), counts.begin(), difference.begin(), std::minus<>());
}

}  // namespace

RunningCounts::RunningCounts(const CandidateTable& table)
    : table_(table), isExact_(table.HasExactSums()) {
  keptLeft_.resize((table_.Size() / kBlock + 1) * (table_.GetNCategories() + 1));
  if (isExact_) {
    CountTable();
  } else {
    keptRight_.resize(keptLeft_.size());
  }
}

void RunningCounts::CountTable() {
  ClassCounts counts(table_.GetNCategories() + 1, 0.0);
  for (std::size_t gap = 0; gap < table_.Size(); gap += kBlock) {
    Keep(keptLeft_, gap, counts);
    table_.AddTo(counts, gap, std::min(gap + kBlock, table_.Size()));
  }
}

void RunningCounts::Sum(std::size_t first, std::size_t last, ClassCounts& counts) const {
  if (isExact_) {
    ClassCounts before;
    CountBefore(first, before);
    CountBefore(last + 1, counts);
    subtract(counts, before, counts);
  } else {
    table_.Sum(first, last, counts);
  }
}

void RunningCounts::Start(std::size_t first, std::size_t last) {
  first_ = first;
  last_ = last;
  if (isExact_) {
    CountBefore(first, before_);
    Sum(first, last, total_);
  } else {
    CountInterval();
  }
}

void RunningCounts::CountInterval() {
  total_.assign(table_.GetNCategories() + 1, 0.0);
  const auto countBlocks = [this](auto count, std::vector<double>& kept, ClassCounts& counts) {
    for (std::size_t gap = first_; gap <= last_;) {
      if (KeptGap(gap) == gap) {
        Keep(kept, gap, counts);
      }
      const std::size_t next = std::min(KeptGap(gap) + kBlock, last_ + 1);
      (table_.*count)(counts, gap, next);
      gap = next;
    }
  };
  countBlocks(&CandidateTable::AddTo, keptLeft_, total_);
  ClassCounts right = total_;
  countBlocks(&CandidateTable::SubtractFrom, keptRight_, right);
}

void RunningCounts::At(std::size_t gap, SplitCounts& counts) const {
  if (isExact_) {
    CountBefore(gap, counts.left);
    subtract(counts.left, before_, counts.left);
    subtract(total_, counts.left, counts.right);
    return;
  }
  std::size_t candidate = KeptGap(std::min(gap, last_));
  if (candidate < first_) {
    candidate = first_;
    counts.left.assign(total_.size(), 0.0);
    counts.right = total_;
  } else {
    const std::size_t at = candidate / kBlock * total_.size();
    const auto copyKept = [&](const std::vector<double>& kept, ClassCounts& copy) {
      copy.assign(kept.data() + at, kept.data() + at + total_.size());
    };
    copyKept(keptLeft_, counts.left);
    copyKept(keptRight_, counts.right);
  }
  Move(candidate, gap, counts);
}

void RunningCounts::Keep(std::vector<double>& kept, std::size_t gap,
                         const ClassCounts& counts) const {
  std::copy(counts.begin(), counts.end(), kept.data() + gap / kBlock * counts.size());
}

void RunningCounts::CountBefore(std::size_t gap, ClassCounts& counts) const {
  const std::size_t width = table_.GetNCategories() + 1;
  const std::size_t candidate = KeptGap(std::min(gap, table_.Size() - 1));
  const double* const kept = keptLeft_.data() + candidate / kBlock * width;
  counts.assign(kept, kept + width);
  table_.AddTo(counts, candidate, gap);
}

}  // namespace MCBinning
