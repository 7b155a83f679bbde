#ifndef MCBINNING_ROUNDS_INTERVAL_SEARCH_H
#define MCBINNING_ROUNDS_INTERVAL_SEARCH_H

#include <cstddef>
#include <vector>

#include "rounds/piece_search.h"
#include "supervised/bins.h"

namespace MCBinning {

/// The cut-point search over distinct values.
class IntervalSearch final : public PieceSearch {
 public:
  IntervalSearch(const PieceTable& pieces, std::size_t nCategories, bool rightBorderClosed,
                 const RoundLimits& limits);

  /// Once the search is finished: what searchCutPoints makes of the values.
  Bins TakeBins();

 private:
  /// The class counts of a bin and one number that is not beyond its values.
  struct FoundBin {
    double from;
    ClassCounts counts;
  };

  void Search(std::vector<PieceTable> intervals) override;
  void SearchOne(PieceTable interval, std::vector<PieceTable>& pending);
  void SearchValues(const PieceTable& values);
  void FileBin(const PieceTable& pieces);

  std::size_t nCategories_;
  bool rightBorderClosed_;
  std::vector<double> cutPoints_;
  std::vector<FoundBin> bins_;
};

}  // namespace MCBinning

#endif
