#ifndef MCBINNING_SUPERVISED_PRE_BINS_H
#define MCBINNING_SUPERVISED_PRE_BINS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/sorted_rows.h"
#include "mcbinning/status.h"
#include "supervised/bins.h"
#include "supervised/ef_preprocess.h"

namespace MCBinning {

/// Whether an attribute is searched by pre-bins: it has more distinct values than the threshold, of
/// which 0 and -1 are none.
bool arePreBinsNeeded(int threshold, std::uint32_t nDistinctValues);

/// Sets `boundaries` to the ends of the equal-frequency pre-bins of `rows`: the most negative
/// finite double, the cut points of `preProcess` without one that lies on the closed end of the
/// value range, the largest finite double. `totalWeight` is the weight of the rows. False, with
/// `boundaries` empty, when the pre-processing can do nothing with them.
bool findPreBins(BINEFPreProcess& preProcess, const SortedRows& rows, double totalWeight,
                 bool rightBorderClosed, std::vector<double>& boundaries);

/// Sums the weights of `rows`, in the tie order (mcbinning.h), per bin and category: bin b of
/// category c is counts[b * nCategories + c]. `boundaries` ascend; the first is not looked at (rows
/// below it belong to the first bin). Bins are (lower, upper] with `rightBorderClosed`, else
/// [lower, upper). Codes are less than `nCategories`.
///
/// Warning 120002: fewer than 2 boundaries (`counts` is left alone); a row beyond the last boundary
/// (the bins before it are counted); or rows that end before the last bin is reached (the bin they
/// end in and all later ones stay 0).
MCStatus countPerBin(const SortedRows& rows, std::size_t nCategories,
                     const std::vector<double>& boundaries, bool rightBorderClosed,
                     std::vector<double>& counts);

/// The cut-point search over the pre-bins of `rows`: searchCutPoints' status or, where that is OK,
/// countPerBin's. OK, with `bins` as they were, when no pre-bins can be made.
MCStatus searchPreBins(const SortedRows& rows, std::size_t nCategories, double totalWeight,
                       int numberOfBins, bool rightBorderClosed, Bins& bins);

}  // namespace MCBinning

#endif
