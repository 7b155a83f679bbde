#ifndef MCBINNING_DATA_SORTED_ROWS_H
#define MCBINNING_DATA_SORTED_ROWS_H

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "data/row_order.h"

namespace MCBinning {

/// Whether all weights are whole numbers from 1 and their sum is less than 2^32.
bool arePackable(std::span<const double> weights);

/// The usable rows of one attribute, ascending by value, NaN after all numbers. -0.0 and 0.0 are
/// one value, for which the first of the cases that have it stands. A row stands for one case, or
/// for all cases of one value and code, its weight being the sum of theirs in the order of the
/// cases; which of the two is nobody else's matter: algorithms read the rows through the accessors
/// and count cases elsewhere. Rows of equal value are in the tie order (mcbinning.h).
class SortedRows {
 public:
  struct Row {
    double value;
    int code;
    double weight;
  };

  SortedRows() = default;

  /// Takes rows that are already in order, one per case.
  explicit SortedRows(const std::vector<Row>& sortedRows);

  std::size_t Size() const { return size_; }

  /// Rows count from 0 to Size() - 1 (not checked).
  double Value(std::size_t row) const {
    const RowKey key = Key(row);
    return key == kZeroKey ? zero_ : valueOf(key);
  }
  RowKey Key(std::size_t row) const { return isPacked_ ? packed_[row].key : wide_[row].key; }

  /// The target's category code, from 0; 0 in rows without a target.
  int Code(std::size_t row) const {
    return static_cast<int>(isPacked_ ? packed_[row].code : wide_[row].code);
  }

  /// The number of cases in rows without a weight variable.
  double Weight(std::size_t row) const {
    return isPacked_ ? static_cast<double>(packed_[row].weight) : wide_[row].weight;
  }

  /// Adds the weights of the rows from `first` to before `end`, times 1 or -1, to class counts: row
  /// by row, so in the tie order, each at element code + 1 and at element 0, the total.
  void AddWeights(std::size_t first, std::size_t end, double sign, std::span<double> counts) const;

  /// Makes the rows of the cases that have a value. Codes are less than `nCategories`. With
  /// `wholeWeights` the weights are packable. Throws std::bad_alloc.
  void Fill(const CaseColumns& cases, std::size_t nCategories, bool wholeWeights);

  /// Merges the rows of equal value and code where that has not been done, which changes what
  /// weights that are no whole numbers add up to across values. Codes must be less than 256.
  void Merge();

  /// Whether every sum of weights is exact, in any order.
  bool HasExactSums() const { return hasExactSums_; }

  /// Every NaN is a value of its own.
  std::size_t CountDistinctValues() const { return distinctValues_; }

  /// No code is as great as this one.
  std::size_t GetCodeLimit() const { return codeLimit_; }

  void Clear() { size_ = 0; }

 private:
  void MakeRoom(std::size_t rows, bool isPacked);
  bool HasZero() const;

  bool isPacked_ = false;
  bool isMerged_ = false;
  bool hasExactSums_ = false;
  double zero_ = 0.0;  // or -0.0
  std::size_t size_ = 0;
  std::size_t room_ = 0;
  std::size_t distinctValues_ = 0;
  std::size_t codeLimit_ = 0;
  std::unique_ptr<PackedRow[]> packed_;  // one of the two is used
  std::unique_ptr<WideRow[]> wide_;
};

}  // namespace MCBinning

#endif
