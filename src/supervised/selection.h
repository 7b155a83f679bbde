#ifndef MCBINNING_SUPERVISED_SELECTION_H
#define MCBINNING_SUPERVISED_SELECTION_H

#include <vector>

#include "mcbinning/status.h"
#include "mcbinning/variable_list.h"

namespace MCBinning {

/// What a run was asked for: parallel lists of variable indexes, both borrowed. Without `targets`
/// the list's target is meant; without both, every variable but the target and the weight.
struct Selection {
  const std::vector<int>* attributes = nullptr;
  const std::vector<int>* targets = nullptr;

  bool IsWholeList() const { return attributes == nullptr && targets == nullptr; }
};

constexpr int kNoTarget = -1;

/// An attribute to bin, against a target or none. One whose status is not OK is refused: it gets
/// its record and nothing else.
struct Request {
  int attribute;
  int target;
  MCStatus status;
};

/// Every variable but the target and the weight.
std::vector<Request> requestAll(const BINVarList& varList, int target, int weight);

/// Sets `requests` to one per requested pair. A pair of two lists is refused with 120013 (an index
/// out of range), 120006 (the target is not categorical) or 120005 (both are one variable, or one
/// is the weight); an attribute alone with 120011 (out of range) or 120005 (it is the weight or the
/// target). False when the selection is of no use as a whole: targets alone, lists of different
/// lengths, no pair, or two lists of which every pair is refused. Attributes alone may all be
/// refused. Must not be called for the whole list.
bool requestPairs(const Selection& selection, const BINVarList& varList, int target, int weight,
                  std::vector<Request>& requests);

/// The same for attributes without a target. False when every attribute is refused, or there is
/// none.
bool requestAttributes(const std::vector<int>& attributes, const BINVarList& varList, int weight,
                       std::vector<Request>& requests);

}  // namespace MCBinning

#endif
