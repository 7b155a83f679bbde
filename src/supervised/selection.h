#ifndef MCBINNING_SUPERVISED_PAIR_SELECTION_H
#define MCBINNING_SUPERVISED_PAIR_SELECTION_H

#include <vector>

#include "mcbinning/status.h"
#include "mcbinning/variable_list.h"

namespace MCBinning {

/// The pairs that a run was asked for: parallel lists of variable indexes, both borrowed. Without
/// `targets` the list's target is meant; without both, every attribute of the variable list.
struct PairSelection {
  const std::vector<int>* attributes = nullptr;
  const std::vector<int>* targets = nullptr;

  bool IsWholeList() const { return attributes == nullptr && targets == nullptr; }
};

/// Sets `statuses` to one status per requested pair. A pair of two lists is refused with 120013 (an
/// index out of range), 120006 (the target is not categorical) or 120005 (both are one variable, or
/// one is the weight); an attribute alone with 120011 (out of range) or 120005 (it is the weight or
/// the target). False when the selection is of no use as a whole: targets alone, lists of different
/// lengths (both leave `statuses` as they were), no pair, or two lists of which every pair is
/// refused. Attributes alone may all be refused. Must not be called for the whole list.
bool CheckPairs(const PairSelection& selection, const BINVarList& varList, int targetIndex,
                int weightIndex, std::vector<MCStatus>& statuses);

}  // namespace MCBinning

#endif
