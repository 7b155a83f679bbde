// The routine reads values in ascending order, adds up their weights and stops where the sum meets
// or passes a target. What it takes from there are the value read last, the next one where the
// target was met, and the sums before and after. So a stretch in which no target is met or passed
// can be read at once, whatever number stands for its values:
//
//     sum      0        310      340 341 342        650      680 683
//     pieces   [........) [......) . . . [...........) [......) . . .
//     targets                       341                         682
#include "rounds/target_search.h"

#include <algorithm>
#include <utility>

namespace MCBinning {
namespace {

double weightOf(const PieceTable& pieces) {
  double weight = 0.0;
  for (std::size_t piece = 0; piece < pieces.Size(); ++piece) {
    weight += pieces[piece].weight;
  }
  return weight;
}

}  // namespace

TargetSearch::TargetSearch(const PieceTable& pieces, int numberOfBins, const RoundLimits& limits)
    : PieceSearch(limits), lastBin_(numberOfBins - 1), targets_(numberOfBins, weightOf(pieces)) {
  Search({pieces});
}

void TargetSearch::Search(std::vector<PieceTable> intervals) {
  PieceTable& whole = intervals.front();
  const std::vector<std::size_t> missing = FindMissing(whole);
  if (missing.empty()) {
    pieces_ = std::move(whole);
  } else {
    wishFor(missing, Limits(), whole);
    Wait(std::move(whole));
  }
}

/// The stretches in which a target is reached, and those that follow a value at which one is met.
std::vector<std::size_t> TargetSearch::FindMissing(const PieceTable& pieces) const {
  std::vector<std::size_t> missing;
  double cumulative = 0.0;
  for (std::size_t piece = 0; piece < pieces.Size(); ++piece) {
    const double before = std::exchange(cumulative, cumulative + pieces[piece].weight);
    if (pieces[piece].IsStretch() &&
        (IsOneMet(before) || TargetsReached(before) != TargetsReached(cumulative))) {
      missing.push_back(piece);
    }
  }
  return missing;
}

/// The number of targets, the last one apart, that are met or passed.
int TargetSearch::TargetsReached(double cumulative) const {
  int first = 0;
  int end = lastBin_;
  while (first < end) {
    const int middle = first + (end - first) / 2;
    const double target = targets_.Of(middle);
    if (EFTargets::IsPassed(target, cumulative) || EFTargets::IsMet(target, cumulative)) {
      first = middle + 1;
    } else {
      end = middle;
    }
  }
  return first;
}

bool TargetSearch::IsOneMet(double cumulative) const {
  const int reached = TargetsReached(cumulative);
  return reached > 0 && EFTargets::IsMet(targets_.Of(reached - 1), cumulative);
}

}  // namespace MCBinning
