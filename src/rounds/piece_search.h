#ifndef MCBINNING_ROUNDS_PIECE_SEARCH_H
#define MCBINNING_ROUNDS_PIECE_SEARCH_H

#include <cstddef>
#include <vector>

#include "rounds/answer.h"
#include "rounds/piece_table.h"
#include "rounds/question.h"

namespace MCBinning {

/// A search over the pieces of one attribute that goes as far as it can, then waits for an answer
/// about some of them, and so on.
class PieceSearch {
 public:
  virtual ~PieceSearch() = default;
  PieceSearch(const PieceSearch&) = delete;
  PieceSearch& operator=(const PieceSearch&) = delete;

  bool IsFinished() const { return waiting_.empty(); }
  double WishedWeight() const;

  /// Adds to the question what the search waits for.
  void Ask(BINAttributeQuestion& question) const;

  /// Goes on with the answer to that. False when it contradicts what was known; then the search is
  /// of no more use.
  bool GoOn(const AttributeAnswer& answer);

 protected:
  explicit PieceSearch(const RoundLimits& limits) : limits_(limits) {}

  /// Searches in ascending intervals as far as that goes without a wish.
  virtual void Search(std::vector<PieceTable> intervals) = 0;

  /// Lets an interval, with its wishes, wait for the next answer; intervals ascend.
  void Wait(PieceTable interval) { waiting_.push_back(std::move(interval)); }

  const RoundLimits& Limits() const { return limits_; }

 private:
  RoundLimits limits_;
  std::vector<PieceTable> waiting_;
};

}  // namespace MCBinning

#endif
