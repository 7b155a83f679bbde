// How a stretch is cut into parts. Nothing is known of the values inside, so half of the borders
// lie at equal steps and half at equal numbers of representable numbers: the first are good for
// values that lie about evenly, as they do between quantiles, the others reach any number within
// ten rounds, however the values crowd. A border is moved within its step to the number that is
// written with the fewest binary digits: whole numbers are met exactly then, and what is met
// exactly is known at once.
#include "rounds/question.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "data/row_key.h"

namespace MCBinning {
namespace {

constexpr double kFewCases = 32.0;     // whose values are no more to send than their parts
constexpr double kMostParts = 256.0;   // of one stretch
constexpr double kCasesPerPart = 8.0;  // at least aimed at

/// The key of the number with the fewest digits from beyond `low` to `high`.
RowKey simplestKey(RowKey low, RowKey high) {
  if (low < kZeroKey && high < kZeroKey) {
    // Negative numbers are the mirror image.
    return ~simplestKey(~high - 1, ~low - 1);
  }
  if (low < kZeroKey) {
    return kZeroKey;
  }
  const auto sameBits = static_cast<unsigned>(std::countl_zero(low ^ high));
  return high & ~(~RowKey{0} >> sameBits >> 1);
}

/// Adds borders that cut the numbers between two keys into about `parts` parts.
void appendSteps(RowKey low, RowKey high, std::size_t parts, std::vector<double>& borders) {
  const RowKey step = (high - low) / parts;
  for (std::size_t part = 1; part < parts; ++part) {
    const RowKey end = low + step * part;
    borders.push_back(valueOf(simplestKey(end - step, end)) + 0.0);
  }
}

void appendEvenSteps(double low, double high, std::size_t parts, std::vector<double>& borders) {
  const auto at = [&](std::size_t part) {
    const double share = static_cast<double>(part) / static_cast<double>(parts);
    return low * (1.0 - share) + high * share;
  };
  for (std::size_t part = 1; part < parts; ++part) {
    const RowKey from = keyOf(at(part - 1));
    const RowKey to = keyOf(at(part));
    if (from < to) {
      borders.push_back(valueOf(simplestKey(from, to)) + 0.0);
    }
  }
}

void appendParts(const Piece& stretch, std::size_t parts, std::vector<double>& borders) {
  const RowKey low = keyOf(stretch.low);
  const RowKey high = keyOf(stretch.high);
  std::vector<double> inner;
  if (high - low <= parts) {
    for (RowKey key = low + 1; key < high; ++key) {
      inner.push_back(valueOf(key) + 0.0);
    }
  } else {
    const std::size_t half = std::max<std::size_t>(parts / 2, 2);
    appendSteps(low, high, half, inner);
    if (std::isfinite(stretch.low) && std::isfinite(stretch.high)) {
      appendEvenSteps(stretch.low, stretch.high, half, inner);
    }
  }
  std::sort(inner.begin(), inner.end());
  inner.erase(std::unique(inner.begin(), inner.end()), inner.end());
  std::copy_if(inner.begin(), inner.end(), std::back_inserter(borders),
               [&](double border) { return stretch.low < border && border < stretch.high; });
}

}  // namespace

void wishFor(const std::vector<std::size_t>& open, const RoundLimits& limits, PieceTable& pieces) {
  double weight = 0.0;
  for (const std::size_t piece : open) {
    weight += pieces[piece].weight;
  }
  const double few = std::min(kFewCases * limits.weightPerCase, limits.mostFetched);
  const std::size_t share = limits.mostBorders / open.size();
  for (const std::size_t piece : open) {
    const double cases = pieces[piece].weight / limits.weightPerCase;
    if (weight <= limits.mostFetched || pieces[piece].weight <= few) {
      pieces.WishValues(piece);
    } else {
      const double parts =
          std::min({static_cast<double>(share), kMostParts, cases / kCasesPerPart});
      pieces.WishParts(piece, static_cast<std::size_t>(std::max(parts, 2.0)));
    }
  }
}

void askFirst(const std::vector<double>& firstBorders, BINAttributeQuestion& question) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  std::vector<double>& borders = question.borders;
  borders = {-kInfinity, std::numeric_limits<double>::max(), kInfinity};
  for (const double border : firstBorders) {
    borders.push_back(border + 0.0);
  }
  std::sort(borders.begin(), borders.end());
  borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
}

void askWishes(const PieceTable& pieces, BINAttributeQuestion& question) {
  std::vector<double>& borders = question.borders;
  for (std::size_t i = 0; i < pieces.Size(); ++i) {
    const Piece& piece = pieces[i];
    if (piece.wish == Piece::Wish::kValues) {
      question.ranges.push_back({piece.low, piece.high});
    } else if (piece.wish == Piece::Wish::kParts) {
      if (borders.empty() || borders.back() != piece.low) {
        borders.push_back(piece.low);
      }
      appendParts(piece, piece.parts, borders);
      borders.push_back(piece.high);
    }
  }
}

}  // namespace MCBinning
