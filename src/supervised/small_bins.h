#ifndef MCBINNING_SUPERVISED_SMALL_BINS_H
#define MCBINNING_SUPERVISED_SMALL_BINS_H

#include "supervised/bins.h"

namespace MCBinning {

/// Merges each interior bin whose total weight is less than `threshold` times that of its lighter
/// neighbour with one of its neighbours: the one that leaves the lower weighted entropy over the
/// three bins, the left one on a tie. All bins are judged before any is merged, so several bins
/// may fold into one. A threshold of 0 or fewer than three bins change nothing.
void mergeSmallBins(double threshold, Bins& bins);

}  // namespace MCBinning

#endif
