/// Answers as they travel between processes.
#ifndef MCBIN_TOOLKIT_ROUNDS_PLAIN_ANSWER_H
#define MCBIN_TOOLKIT_ROUNDS_PLAIN_ANSWER_H

#include <mcbinning/rounds.h>
#include <mcbinning/user_missing.h>

#include <cstddef>
#include <vector>

#include "toolkit/model/model.h"

namespace mcbin {

/// A BINRoundAnswer without its structure, which the question knows. Two answers add up number by
/// number: `sums` by adding, the extremes by comparing; the values stand in any order.
struct PlainAnswer {
  /// Cases, weight without a target category, weight of each class; then item by item of the
  /// question the weights of the cells, of missing and of declared missing values.
  std::vector<double> sums;
  std::vector<double> minima;  ///< Item by item.
  std::vector<double> maxima;
  /// A value, its class and its weight, and the item that asked for it.
  std::vector<int> items;
  std::vector<double> values;
  std::vector<int> codes;
  std::vector<double> weights;
};

PlainAnswer plainAnswer(const BINRoundAnswer& answer);

/// std::runtime_error when the numbers are not as many as the question asks for.
BINRoundAnswer answerOf(const PlainAnswer& plain, const BINRoundQuestion& question,
                        std::size_t categories);

/// The definition that says what `rules` say.
BINNumericUserMissing userMissingOf(const MissingRules& rules);

/// BINRoundCounter over some cases; `rules` are of the attributes.
BINRoundAnswer countCases(const BINRoundQuestion& question, std::size_t categories,
                          const std::vector<MissingRules>& rules, BINRoundCases cases);

}  // namespace mcbin

#endif
