#ifndef MCBINNING_SUPERVISED_PRE_BINS_H
#define MCBINNING_SUPERVISED_PRE_BINS_H

#include <vector>

#include "data/sorted_rows.h"
#include "supervised/ef_preprocess.h"

namespace MCBinning {

/// Sets `boundaries` to the ends of the equal-frequency pre-bins of `rows`: the most negative
/// finite double, the cut points of `preProcess` without one that lies on the closed end of the
/// value range, the largest finite double. `totalWeight` is the weight of the rows. False, with
/// `boundaries` empty, when the pre-processing can do nothing with them.
bool FindPreBins(BINEFPreProcess& preProcess, const SortedRows& rows, double totalWeight,
                 bool rightBorderClosed, std::vector<double>& boundaries);

}  // namespace MCBinning

#endif
