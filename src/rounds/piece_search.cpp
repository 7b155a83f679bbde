#include "rounds/piece_search.h"

#include <optional>
#include <utility>

namespace MCBinning {

double PieceSearch::WishedWeight() const {
  double weight = 0.0;
  for (const PieceTable& interval : waiting_) {
    weight += interval.WishedWeight();
  }
  return weight;
}

void PieceSearch::Ask(BINAttributeQuestion& question) const {
  for (const PieceTable& interval : waiting_) {
    askWishes(interval, question);
  }
}

bool PieceSearch::GoOn(const AttributeAnswer& answer) {
  std::vector<PieceTable> intervals;
  for (const PieceTable& interval : std::exchange(waiting_, {})) {
    std::optional<PieceTable> fulfilled = answer.Fulfil(interval);
    if (!fulfilled) {
      return false;
    }
    intervals.push_back(std::move(*fulfilled));
  }
  Search(std::move(intervals));
  return true;
}

}  // namespace MCBinning
