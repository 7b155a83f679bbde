#include "supervised/running_counts.h"

#include <algorithm>
#include <functional>

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
  for (std::size_t border = 0; border < table_.Size(); border += kBlock) {
    Keep(keptLeft_, border, counts);
    table_.AddTo(counts, border, std::min(border + kBlock, table_.Size()));
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
    for (std::size_t border = first_; border <= last_;) {
      if (KeptBorder(border) == border) {
        Keep(kept, border, counts);
      }
      const std::size_t next = std::min(KeptBorder(border) + kBlock, last_ + 1);
      (table_.*count)(counts, border, next);
      border = next;
    }
  };
  countBlocks(&CandidateTable::AddTo, keptLeft_, total_);
  ClassCounts right = total_;
  countBlocks(&CandidateTable::SubtractFrom, keptRight_, right);
}

void RunningCounts::At(std::size_t border, SplitCounts& counts) const {
  if (isExact_) {
    CountBefore(border, counts.left);
    subtract(counts.left, before_, counts.left);
    subtract(total_, counts.left, counts.right);
    return;
  }
  std::size_t candidate = KeptBorder(std::min(border, last_));
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
  Move(candidate, border, counts);
}

void RunningCounts::Keep(std::vector<double>& kept, std::size_t border,
                         const ClassCounts& counts) const {
  std::copy(counts.begin(), counts.end(), kept.data() + border / kBlock * counts.size());
}

void RunningCounts::CountBefore(std::size_t border, ClassCounts& counts) const {
  const std::size_t width = table_.GetNCategories() + 1;
  const std::size_t candidate = KeptBorder(std::min(border, table_.Size() - 1));
  const double* const kept = keptLeft_.data() + candidate / kBlock * width;
  counts.assign(kept, kept + width);
  table_.AddTo(counts, candidate, border);
}

}  // namespace MCBinning
