#ifndef MCBINNING_ROUNDS_PIECE_TABLE_H
#define MCBINNING_ROUNDS_PIECE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "data/sorted_rows.h"
#include "supervised/entropy.h"

namespace MCBinning {

struct ClassWeight {
  std::uint32_t code;
  double weight;
};

/// One distinct value, which both ends are then, or the values strictly between two numbers that
/// are not told apart yet.
struct Piece {
  enum class Wish : std::uint8_t { kNothing, kParts, kValues };  // of a stretch

  double low;
  double high;
  double weight;
  std::size_t firstEntry;
  Wish wish = Wish::kNothing;  // what the next round is asked
  std::size_t parts = 0;       // that are wished

  bool IsStretch() const { return low < high; }
};

/// What is known of an attribute's values, or of those of an interval: pieces in ascending order,
/// each with the weight of every class that occurs in it. Weights are whole numbers from 1.
class PieceTable {
 public:
  std::size_t Size() const { return pieces_.size(); }
  const Piece& operator[](std::size_t piece) const { return pieces_[piece]; }

  /// In ascending code order.
  std::span<const ClassWeight> ClassWeights(std::size_t piece) const;

  /// A piece without weight is left out. Pieces and, in each, codes must come in ascending order.
  void Append(double low, double high, std::span<const ClassWeight> weights);
  void AppendFrom(const PieceTable& other, std::size_t piece);

  void WishValues(std::size_t piece) { pieces_[piece].wish = Piece::Wish::kValues; }
  void WishParts(std::size_t piece, std::size_t parts) {
    pieces_[piece].wish = Piece::Wish::kParts;
    pieces_[piece].parts = parts;
  }

  /// Brings the ends of a first and of a last stretch as close to the values as they can be.
  void Tighten(double minimum, double maximum);

  bool HasStretch() const;

  /// The weight of the stretches of which something is wished.
  double WishedWeight() const;

  /// The pieces from `first` to before `end`.
  PieceTable Part(std::size_t first, std::size_t end) const;

  /// Of all pieces; the total is the sum of the classes in code order.
  ClassCounts Count(std::size_t nCategories) const;

  /// One row per piece and class. For a stretch stands one of the numbers that may be in it: the
  /// least or the greatest of all values where it is the first or the last piece, else any.
  std::vector<SortedRows::Row> Rows() const;

 private:
  double StandIn(std::size_t piece) const;

  std::vector<Piece> pieces_;
  std::vector<ClassWeight> entries_;
};

}  // namespace MCBinning

#endif
