#include "rounds/piece_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

std::span<const ClassWeight> PieceTable::ClassWeights(std::size_t piece) const {
  const std::size_t first = pieces_[piece].firstEntry;
  const std::size_t end =
      piece + 1 < pieces_.size() ? pieces_[piece + 1].firstEntry : entries_.size();
  return std::span(entries_).subspan(first, end - first);
}

void PieceTable::Append(double low, double high, std::span<const ClassWeight> weights) {
  if (weights.empty()) {
    return;
  }
  double sum = 0.0;
  for (const ClassWeight& entry : weights) {
    sum += entry.weight;
  }
  pieces_.push_back({low, high, sum, entries_.size()});
  entries_.insert(entries_.end(), weights.begin(), weights.end());
}

void PieceTable::AppendFrom(const PieceTable& other, std::size_t piece) {
  Append(other[piece].low, other[piece].high, other.ClassWeights(piece));
}

void PieceTable::Tighten(double minimum, double maximum) {
  if (!pieces_.empty() && pieces_.front().IsStretch()) {
    pieces_.front().low = std::nextafter(minimum, -kInfinity);
  }
  if (!pieces_.empty() && pieces_.back().IsStretch()) {
    pieces_.back().high = std::nextafter(maximum, kInfinity);
  }
}

bool PieceTable::HasStretch() const {
  return std::any_of(pieces_.begin(), pieces_.end(), [](const Piece& p) { return p.IsStretch(); });
}

double PieceTable::WishedWeight() const {
  return std::accumulate(pieces_.begin(), pieces_.end(), 0.0, [](double sum, const Piece& piece) {
    return piece.wish == Piece::Wish::kNothing ? sum : sum + piece.weight;
  });
}

PieceTable PieceTable::Part(std::size_t first, std::size_t end) const {
  PieceTable part;
  for (std::size_t piece = first; piece < end; ++piece) {
    part.AppendFrom(*this, piece);
  }
  return part;
}

ClassCounts PieceTable::Count(std::size_t nCategories) const {
  ClassCounts counts(nCategories + 1, 0.0);
  for (const ClassWeight& entry : entries_) {
    counts[entry.code + 1] += entry.weight;
  }
  counts[0] = std::accumulate(counts.begin() + 1, counts.end(), 0.0);
  return counts;
}

double PieceTable::StandIn(std::size_t piece) const {
  // Both are tightened: the number next to the outer end is a value.
  return piece + 1 == Size() ? std::nextafter(pieces_[piece].high, -kInfinity)
                             : std::nextafter(pieces_[piece].low, kInfinity);
}

std::vector<SortedRows::Row> PieceTable::Rows() const {
  std::vector<SortedRows::Row> rows;
  rows.reserve(entries_.size());
  for (std::size_t piece = 0; piece < Size(); ++piece) {
    const double value = pieces_[piece].IsStretch() ? StandIn(piece) : pieces_[piece].low;
    for (const ClassWeight& entry : ClassWeights(piece)) {
      rows.push_back({value, static_cast<int>(entry.code), entry.weight});
    }
  }
  return rows;
}

}  // namespace MCBinning
