#ifndef MCBINNING_ROUNDS_QUESTION_CELLS_H
#define MCBINNING_ROUNDS_QUESTION_CELLS_H

#include <cstddef>
#include <span>
#include <vector>

#include "mcbinning/rounds.h"
#include "mcbinning/status.h"
#include "rounds/cell_index.h"

namespace MCBinning {

/// Whether the borders and the ranges of every item ascend; a NaN among them does not.
bool doesAscend(const BINRoundQuestion& question);

/// Adds an answer to another one, which must not be new. False when they do not fit each other.
bool addAnswer(const BINRoundAnswer& part, BINRoundAnswer& answer);

/// A question, ready to be asked of case after case.
class QuestionCells {
 public:
  /// The question ascends.
  QuestionCells(const BINRoundQuestion& question, std::size_t nCategories);

  /// As BINRoundCounter::Count, but for an exception when memory runs out.
  MCStatus Count(const BINRoundCases& cases, BINRoundAnswer& answer) const;

 private:
  struct Item {
    explicit Item(const BINAttributeQuestion& question);

    std::size_t attribute;
    CellIndex cells;
    CellIndex ranges;
    std::vector<bool> isAsked;  // by cell of the ranges
  };

  /// The weights of the cases, 0 for one that is dropped, and their codes.
  struct UsedCases {
    std::vector<double> weights;
    std::span<const int> codes;  // empty: all 0

    int Code(std::size_t i) const { return codes.empty() ? 0 : codes[i]; }
  };

  void MakeRoom(BINRoundAnswer& answer) const;
  MCStatus CountCases(const BINRoundCases& cases, UsedCases& used, BINRoundAnswer& answer) const;
  void CountColumn(const Item& item, std::span<const double> column, const UsedCases& used,
                   const BINNumericUserMissing* userMissing, BINAttributeAnswer& answer) const;

  std::size_t nCategories_;
  std::vector<Item> items_;
};

}  // namespace MCBinning

#endif
