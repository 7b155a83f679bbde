#ifndef MCBINNING_SUPERVISED_CANDIDATE_TABLE_H
#define MCBINNING_SUPERVISED_CANDIDATE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "data/sorted_rows.h"
#include "supervised/entropy.h"

namespace MCBinning {

/// The candidates of one attribute/target pair in ascending order, either its distinct values or
/// its pre-bins, each with the weight of every category that occurs in it: one entry for each, in
/// ascending code order. Only weights other than zero are held, so that the memory follows the
/// number of rows whatever the number of categories; merged rows are the entries as they stand. A
/// NaN value is a candidate of its own.
///
/// A **gap** is a place where candidates can be parted. Gap g lies before candidate g, from 0,
/// before the first, to Size(), after the last; every position between candidates is counted so.
class CandidateTable {
 public:
  /// One candidate per distinct value; the weights of a category are added in the tie order. Merges
  /// `rows` and borrows them. The cut point between two neighbours is the smaller value when right
  /// borders are closed, else the greater one.
  static CandidateTable FromRows(SortedRows& rows, std::size_t nCategories, bool rightBorderClosed);

  /// One candidate per pre-bin. `boundaries` has one more element than there are pre-bins; the cut
  /// point between two neighbours is the boundary that they share. `counts` holds `nCategories`
  /// weights per pre-bin, pre-bin by pre-bin; another size makes a table that is not consistent.
  static CandidateTable FromPreBins(const std::vector<double>& boundaries,
                                    const std::vector<double>& counts, std::size_t nCategories);

  /// Whether every category of every candidate had its place in what the table was made from. A
  /// table that is not consistent holds no candidate.
  bool IsConsistent() const { return entries_ != nullptr; }

  std::size_t Size() const { return size_; }
  std::size_t GetNCategories() const { return nCategories_; }

  /// Whether every sum of weights is exact, in any order.
  bool HasExactSums() const { return entries_->HasExactSums(); }

  /// The cut point in a gap from 1 on; NaN in the last gap, after which there is nothing.
  double CutPointIn(std::size_t gap) const;

  /// The entries of a candidate are those from FirstEntry(candidate) to before
  /// FirstEntry(candidate + 1).
  std::size_t FirstEntry(std::size_t candidate) const {
    return firstEntries_.empty() ? candidate : firstEntries_[candidate];
  }
  std::size_t Code(std::size_t entry) const {
    return static_cast<std::size_t>(entries_->Code(entry));
  }
  double Weight(std::size_t entry) const { return entries_->Weight(entry); }

  /// Adds the candidates from `first` to before `end` to class counts, or takes them away:
  /// candidate by candidate and category by category in code order, each weight at its category's
  /// element and at the total.
  void AddTo(ClassCounts& counts, std::size_t first, std::size_t end) const {
    entries_->AddWeights(FirstEntry(first), FirstEntry(end), 1.0, counts);
  }
  void SubtractFrom(ClassCounts& counts, std::size_t first, std::size_t end) const {
    entries_->AddWeights(FirstEntry(first), FirstEntry(end), -1.0, counts);
  }

  /// Class counts of the candidates `first` to `last`, both included, added in ascending order.
  void Sum(std::size_t first, std::size_t last, ClassCounts& counts) const;

 private:
  explicit CandidateTable(std::size_t nCategories) : nCategories_(nCategories) {}

  std::size_t nCategories_;
  std::size_t size_ = 0;
  const SortedRows* entries_ = nullptr;
  std::unique_ptr<SortedRows> ownEntries_;   // null when borrowed
  std::vector<std::uint32_t> firstEntries_;  // empty when each candidate has one entry
  bool rightBorderClosed_ = true;
  std::vector<double> boundaries_;  // of pre-bins
};

}  // namespace MCBinning

#endif
