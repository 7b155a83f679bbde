#include "supervised/candidate_table.h"

#include <limits>

namespace MCBinning {
namespace {

constexpr std::size_t kMaxCategories = 256;

}  // namespace

CandidateTable CandidateTable::FromRows(SortedRows& rows, std::size_t nCategories,
                                        bool rightBorderClosed) {
  CandidateTable table(nCategories);
  if (rows.GetCodeLimit() > nCategories || nCategories > kMaxCategories) {
    return table;
  }
  rows.Merge();
  table.entries_ = &rows;
  table.size_ = rows.CountDistinctValues();
  table.rightBorderClosed_ = rightBorderClosed;
  if (table.size_ != rows.Size()) {
    table.firstEntries_.reserve(table.size_ + 1);
    for (std::size_t entry = 0; entry < rows.Size(); ++entry) {
      if (entry == 0 || !isSameValue(rows.Key(entry), rows.Key(entry - 1))) {
        table.firstEntries_.push_back(static_cast<std::uint32_t>(entry));
      }
    }
    table.firstEntries_.push_back(static_cast<std::uint32_t>(rows.Size()));
  }
  return table;
}

CandidateTable CandidateTable::FromPreBins(const std::vector<double>& boundaries,
                                           const std::vector<double>& counts,
                                           std::size_t nCategories) {
  CandidateTable table(nCategories);
  if (boundaries.empty() || nCategories > kMaxCategories ||
      counts.size() != (boundaries.size() - 1) * nCategories) {
    return table;
  }
  std::vector<SortedRows::Row> entries;
  table.firstEntries_.push_back(0);
  for (std::size_t bin = 0; bin + 1 < boundaries.size(); ++bin) {
    for (std::size_t code = 0; code < nCategories; ++code) {
      if (const double weight = counts[bin * nCategories + code]; weight != 0.0) {
        entries.push_back({static_cast<double>(bin), static_cast<int>(code), weight});
      }
    }
    table.firstEntries_.push_back(static_cast<std::uint32_t>(entries.size()));
  }
  table.ownEntries_ = std::make_unique<SortedRows>(entries);
  table.entries_ = table.ownEntries_.get();
  table.size_ = boundaries.size() - 1;
  table.boundaries_ = boundaries;
  return table;
}

double CandidateTable::CutPointIn(std::size_t gap) const {
  if (gap == size_) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (!boundaries_.empty()) {
    return boundaries_[gap];
  }
  return entries_->Value(FirstEntry(rightBorderClosed_ ? gap - 1 : gap));
}

void CandidateTable::Sum(std::size_t first, std::size_t last, ClassCounts& counts) const {
  counts.assign(nCategories_ + 1, 0.0);
  AddTo(counts, first, last + 1);
}

}  // namespace MCBinning
