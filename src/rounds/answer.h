#ifndef MCBINNING_ROUNDS_ANSWER_H
#define MCBINNING_ROUNDS_ANSWER_H

#include <cstddef>
#include <optional>
#include <vector>

#include "mcbinning/rounds.h"
#include "rounds/piece_table.h"

namespace MCBinning {

/// Sorts weights by value and code and adds up those of the same. -0.0 becomes 0.0.
void mergeValueWeights(std::vector<BINValueWeight>& weights);

/// Whether `weight` is a whole number from 0 to below 2^53.
bool isWholeWeight(double weight);

/// The answer to one question about one attribute, which it reads together.
class AttributeAnswer {
 public:
  /// Empty when the answer does not fit the question. Both are borrowed.
  static std::optional<AttributeAnswer> Read(const BINAttributeQuestion& question,
                                             const BINAttributeAnswer& answer,
                                             std::size_t nCategories);

  /// Whether cells and missing weights add up to these weights of the classes.
  bool AddsUpTo(const std::vector<double>& classWeights) const;

  /// The pieces of the values beyond the first border and before the last one, these included.
  PieceTable AllPieces() const;

  /// The table with what was wished replaced by what was answered, without any wish; empty when the
  /// answer has other weights of the classes than a stretch had.
  std::optional<PieceTable> Fulfil(const PieceTable& pieces) const;

  double DistinctValues() const { return answer_->distinctValues; }
  double Minimum() const { return answer_->minimum; }
  double Maximum() const { return answer_->maximum; }

 private:
  AttributeAnswer() = default;

  std::size_t CellOf(double border) const;
  void AppendCell(std::size_t cell, PieceTable& pieces) const;
  void AppendCells(const Piece& stretch, PieceTable& pieces) const;
  void AppendValues(const Piece& stretch, PieceTable& pieces) const;

  const BINAttributeQuestion* question_ = nullptr;
  const BINAttributeAnswer* answer_ = nullptr;
  std::size_t nCategories_ = 0;
  std::vector<BINValueWeight> values_;  // merged
};

}  // namespace MCBinning

#endif
