#ifndef MCBINNING_ROUNDS_QUESTION_H
#define MCBINNING_ROUNDS_QUESTION_H

#include <cstddef>
#include <vector>

#include "mcbinning/rounds.h"
#include "rounds/piece_table.h"

namespace MCBinning {

/// How much a round may ask.
struct RoundLimits {
  double mostFetched = 0.0;     // weight of the values of one interval that are asked for together
  double weightPerCase = 1.0;   // on average
  std::size_t mostBorders = 0;  // about so many that cut the stretches of one interval
};

/// Wishes for the `open` pieces of an interval, stretches all of them: for their values when these
/// are few, else for parts of the stretches that are not small themselves.
void wishFor(const std::vector<std::size_t>& open, const RoundLimits& limits, PieceTable& pieces);

/// The first question about an attribute. Borders beside `firstBorders` hold the infinities and the
/// greatest finite number, which pre-bins look at, apart from all stretches.
void askFirst(const std::vector<double>& firstBorders, BINAttributeQuestion& question);

/// Adds what is wished of the pieces, which lie beyond what the question asks already.
void askWishes(const PieceTable& pieces, BINAttributeQuestion& question);

}  // namespace MCBinning

#endif
