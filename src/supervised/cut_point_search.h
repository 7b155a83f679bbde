#ifndef MCBINNING_SUPERVISED_CUT_POINT_SEARCH_H
#define MCBINNING_SUPERVISED_CUT_POINT_SEARCH_H

#include <cstddef>
#include <vector>

#include "mcbinning/status.h"
#include "supervised/bins.h"
#include "supervised/candidate_table.h"

namespace MCBinning {

/// The minimum-description-length test of a split whose parts have the weighted entropy
/// `splitEntropy`; mcbinning.h has the formula and the paper.
bool isSplitWorthwhile(const ClassCounts& total, const ClassCounts& left, const ClassCounts& right,
                       double splitEntropy);

/// Splits the candidates recursively in the gap of least weighted class entropy, as long as a
/// split passes the minimum-description-length test.
///
/// The result is OK, warning 120017 (no split was accepted: one bin) or error 120002 (`table` is
/// not consistent; `bins` is left empty). A table without a candidate makes one empty bin. The
/// total of each bin is the sum of its categories in code order.
///
/// With whole-number weights every sum is exact. With others the order of the additions decides
/// the last bit: within a candidate it is the tie order (mcbinning.h); the class counts of an
/// interval are added candidate by candidate in ascending order; the running counts of a scan move
/// as SplitScan says; the counts of the two sides of a split are made by adding up the side that
/// ends nearer to the split (the left one when its last candidate is not beyond (first + last) / 2
/// in whole numbers), in ascending order, and by taking that side, element by element, from the
/// counts of the interval.
MCStatus searchCutPoints(const CandidateTable& table, Bins& bins);

/// The best split of some candidates; its right part begins with the candidate `gap`.
struct BestSplit {
  std::size_t gap = 0;
  bool isFound = false;
  bool isAccepted = false;  // the split can be made and passes the test
};

/// The first step of the search: the best split of all candidates of `table`, which is consistent.
BestSplit findBestSplit(const CandidateTable& table);

/// What is known of the best split of the values of a table whose candidates may each stand for a
/// stretch of neighbouring values that are not told apart.
struct SplitOutlook {
  std::vector<std::size_t> open;  // candidates in or at which the best split may be
  bool canBeAccepted = false;
};

/// `table` is consistent, not empty and of exact sums.
SplitOutlook foreseeBestSplit(const CandidateTable& table);

}  // namespace MCBinning

#endif
