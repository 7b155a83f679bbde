#include "supervised/bins.h"

namespace MCBinning {

std::vector<std::vector<double>> Bins::Rows() const {
  if (Size() == 0) {
    return {{}};
  }
  std::vector<std::vector<double>> rows;
  rows.reserve(Size());
  for (std::size_t bin = 0; bin < Size(); ++bin) {
    const ClassCountsView row = Counts(bin);
    rows.emplace_back(row.begin(), row.end());
  }
  return rows;
}

double modelEntropy(const Bins& bins, double totalWeight) {
  double sum = 0.0;
  for (std::size_t bin = 0; bin < bins.Size(); ++bin) {
    const ClassCountsView counts = bins.Counts(bin);
    sum += counts[0] * entropyOf(counts);
  }
  return sum / totalWeight;
}

}  // namespace MCBinning
