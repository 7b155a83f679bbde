#ifndef MCBINNING_SUPERVISED_CANDIDATE_TABLE_H
#define MCBINNING_SUPERVISED_CANDIDATE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "data/sorted_rows.h"
#include "supervised/entropy.h"

namespace MCBinning {

/// The candidates of one attribute/target pair in ascending order, either its distinct values or
/// its pre-bins, each with the weight of every category that occurs in it. Only weights other than
/// zero are held, in ascending code order, so that the memory follows the number of rows whatever
/// the number of categories. A NaN value is a candidate of its own.
class CandidateTable {
 public:
  /// One candidate per distinct value; the weights of a category are added in row order.
  /// `nDistinctValues` only sizes the memory. The cut point between two neighbours is the smaller
  /// value when right borders are closed, else the greater one.
  static CandidateTable FromRows(const SortedRows& rows, std::size_t nCategories,
                                 std::size_t nDistinctValues, bool rightBorderClosed);

  /// One candidate per pre-bin. `boundaries` has one more element than there are pre-bins; the cut
  /// point between two neighbours is the boundary that they share. `counts` holds `nCategories`
  /// weights per pre-bin, pre-bin by pre-bin. A null pointer or another size makes a table that is
  /// not consistent.
  static CandidateTable FromPreBins(const std::vector<double>* boundaries,
                                    const std::vector<double>* counts, std::size_t nCategories);

  /// Whether every category of every candidate had its place in what the table was made from. A
  /// table that is not consistent holds no candidate.
  bool IsConsistent() const { return consistent_; }

  std::size_t Size() const { return cutPoints_.size(); }
  std::size_t GetNCategories() const { return nCategories_; }

  /// The cut point that separates a candidate from the next one; NaN for the last candidate.
  double CutPointAfter(std::size_t candidate) const { return cutPoints_[candidate]; }

  /// The category codes that carry weight in a candidate, ascending, and their weights.
  std::span<const std::uint8_t> Codes(std::size_t candidate) const {
    return {codes_.data() + offsets_[candidate], offsets_[candidate + 1] - offsets_[candidate]};
  }
  std::span<const double> Weights(std::size_t candidate) const {
    return {weights_.data() + offsets_[candidate], offsets_[candidate + 1] - offsets_[candidate]};
  }

  /// The number of weights that the candidates `first` to `last`, both included, carry.
  std::size_t CountEntries(std::size_t first, std::size_t last) const {
    return offsets_[last + 1] - offsets_[first];
  }

  /// Adds a candidate to class counts, or takes it away: category by category in code order, each
  /// weight first at its category's element, then at the total.
  void AddTo(ClassCounts& counts, std::size_t candidate) const;
  void SubtractFrom(ClassCounts& counts, std::size_t candidate) const;

  /// Class counts of the candidates `first` to `last`, both included, added in ascending order.
  void Sum(std::size_t first, std::size_t last, ClassCounts& counts) const;

 private:
  explicit CandidateTable(std::size_t nCategories);

  void Reserve(std::size_t nCandidates, std::size_t nEntries);
  void AddEntry(std::size_t code, double weight);
  void CloseCandidate(double cutPoint);
  void AddRun(const SortedRows& rows, std::size_t begin, std::size_t end,
              std::vector<double>& weightOfCode, std::vector<std::uint8_t>& codesOfRun);

  std::size_t nCategories_;
  bool consistent_ = false;
  std::vector<double> cutPoints_;
  std::vector<std::uint32_t> offsets_;  // of each candidate's first entry, then the entry count
  std::vector<std::uint8_t> codes_;
  std::vector<double> weights_;
};

}  // namespace MCBinning

#endif
