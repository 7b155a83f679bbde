#include "supervised/bins.h"

namespace MCBinning {

double ModelEntropy(const Bins& bins, double totalWeight) {
  double sum = 0.0;
  for (std::size_t bin = 0; bin < bins.Size(); ++bin) {
    const ClassCountsView counts = bins.Counts(bin);
    sum += counts[0] * Entropy(counts);
  }
  return sum / totalWeight;
}

}  // namespace MCBinning
