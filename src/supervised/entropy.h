#ifndef MCBINNING_SUPERVISED_ENTROPY_H
#define MCBINNING_SUPERVISED_ENTROPY_H

#include <span>
#include <vector>

namespace MCBinning {

/// Class counts of some cases: element 0 is their total weight, element c + 1 the weight of
/// category code c. A vector over k categories has k + 1 elements.
using ClassCounts = std::vector<double>;
using ClassCountsView = std::span<const double>;

/// Entropy to base 2: minus the sum, in code order, of p * log2(p) with p = element / total.
/// A p of 0 contributes nothing; the entropy of a total of 0 is 0. Never -0.0. Plain IEEE
/// arithmetic: a negative element (what is left after subtracting rounded sums) gives NaN.
double entropyOf(ClassCountsView counts);

/// (L * entropyOf(left) + R * entropyOf(right)) / (L + R), L and R being the totals; NaN when both
/// totals are 0.
double weightedEntropy(ClassCountsView left, ClassCountsView right);

}  // namespace MCBinning

#endif
