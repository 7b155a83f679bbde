#ifndef MCBINNING_SUPERVISED_BINS_H
#define MCBINNING_SUPERVISED_BINS_H

#include <cstddef>
#include <vector>

#include "supervised/entropy.h"

namespace MCBinning {

/// Bins in ascending order and the cut points between them.
struct Bins {
  std::vector<double> cutPoints;  // strictly increasing, one less than there are bins
  std::vector<double> counts;     // the class counts of bin after bin
  std::size_t width = 0;          // of the class counts of one bin: number of categories + 1

  std::size_t Size() const { return width == 0 ? 0 : counts.size() / width; }
  ClassCountsView Counts(std::size_t bin) const {
    return ClassCountsView(counts).subspan(bin * width, width);
  }

  /// The class counts, one row per bin; one empty row when nothing was counted.
  std::vector<std::vector<double>> Rows() const;
};

/// The sum, in bin order, of each bin's total * Entropy, divided by `totalWeight`.
double modelEntropy(const Bins& bins, double totalWeight);

}  // namespace MCBinning

#endif
