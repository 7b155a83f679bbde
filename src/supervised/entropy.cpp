#include "supervised/entropy.h"

#include "numerics/log2.h"

namespace MCBinning {

double entropyOf(ClassCountsView counts) {
  const double total = counts[0];
  if (total == 0.0) {
    return 0.0;
  }
  double entropy = 0.0;
  for (const double weight : counts.subspan(1)) {
    const double p = weight / total;
    if (p != 0.0) {
      // Subtracting term by term rounds like negating the sum and keeps a zero positive.
      entropy -= p * roundedLog2(p);
    }
  }
  return entropy;
}

double weightedEntropy(ClassCountsView left, ClassCountsView right) {
  return (left[0] * entropyOf(left) + right[0] * entropyOf(right)) / (left[0] + right[0]);
}

}  // namespace MCBinning
