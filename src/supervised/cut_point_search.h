#ifndef MCBINNING_SUPERVISED_CUT_POINT_SEARCH_H
#define MCBINNING_SUPERVISED_CUT_POINT_SEARCH_H

#include "mcbinning/status.h"
#include "supervised/bins.h"
#include "supervised/candidate_table.h"

namespace MCBinning {

/// Splits the candidates recursively in the gap of least weighted class entropy, as long as a
/// split passes the minimum-description-length test.
///
/// The result is OK, warning 120017 (no split was accepted: one bin) or error 120002 (`table` is
/// not consistent; `bins` is left empty). A table without a candidate makes one empty bin. The
/// total of each bin is the sum of its categories in code order.
///
/// With whole-number weights every sum is exact. With others the order of the additions decides
/// the last bit: the class counts of an interval are added candidate by candidate in ascending
/// order; the running counts of a scan move as SplitScan says; the counts of the two sides of a
/// split are made by adding up the side that ends nearer to the split (the left one when its
/// last candidate is not beyond (first + last) / 2 in whole numbers), in ascending order, and by
/// taking that side, element by element, from the counts of the interval.
MCStatus SearchCutPoints(const CandidateTable& table, Bins& bins);

}  // namespace MCBinning

#endif
