#ifndef MCBINNING_ROUNDS_TARGET_SEARCH_H
#define MCBINNING_ROUNDS_TARGET_SEARCH_H

#include <cstddef>
#include <vector>

#include "rounds/piece_search.h"
#include "supervised/ef_targets.h"

namespace MCBinning {

/// Finds the values at which the equal-frequency routine ends a bin.
class TargetSearch final : public PieceSearch {
 public:
  /// `numberOfBins` is at least 2.
  TargetSearch(const PieceTable& pieces, int numberOfBins, const RoundLimits& limits);

  /// Once the search is finished: pieces whose rows the routine reads as it reads those of the
  /// values.
  const PieceTable& Pieces() const { return pieces_; }

 private:
  void Search(std::vector<PieceTable> intervals) override;
  std::vector<std::size_t> FindMissing(const PieceTable& pieces) const;
  int TargetsReached(double cumulative) const;
  bool IsOneMet(double cumulative) const;

  int lastBin_;  // its target is the total weight, and its end no cut point
  EFTargets targets_;
  PieceTable pieces_;
};

}  // namespace MCBinning

#endif
