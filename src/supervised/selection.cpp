#include "supervised/pair_selection.h"

#include <algorithm>
#include <cstddef>

#include "status/status_codes.h"

namespace MCBinning {
namespace {

bool isCategorical(const IBINVariable& variable) {
  const IBINVariable::MeasureLevel level = variable.GetMeasureLevel();
  return level == IBINVariable::NumericCategoricalLevel ||
         level == IBINVariable::StringCategoricalLevel;
}

MCStatus checkPair(const BINVarList& varList, int weightIndex, int attribute, int target) {
  const IBINVariable* const targetVariable = varList.GetVarAt(target);
  if (targetVariable == nullptr || varList.GetVarAt(attribute) == nullptr) {
    return errorStatus(kNoSuchIndex);
  }
  if (!isCategorical(*targetVariable)) {
    return errorStatus(kTargetNotCategorical);
  }
  if (target == attribute || target == weightIndex || attribute == weightIndex) {
    return errorStatus(kSameOrWeightVariable);
  }
  return {};
}

MCStatus checkAttribute(const BINVarList& varList, int targetIndex, int weightIndex,
                        int attribute) {
  if (varList.GetVarAt(attribute) == nullptr) {
    return errorStatus(kAttributeOutOfRange);
  }
  if (attribute == weightIndex || attribute == targetIndex) {
    return errorStatus(kSameOrWeightVariable);
  }
  return {};
}

}  // namespace

bool CheckPairs(const PairSelection& selection, const BINVarList& varList, int targetIndex,
                int weightIndex, std::vector<MCStatus>& statuses) {
  const std::vector<int>* const attributes = selection.attributes;
  const std::vector<int>* const targets = selection.targets;
  if (attributes == nullptr || (targets != nullptr && targets->size() != attributes->size())) {
    return false;
  }
  statuses.clear();
  for (std::size_t i = 0; i < attributes->size(); ++i) {
    statuses.push_back(targets != nullptr
                           ? checkPair(varList, weightIndex, (*attributes)[i], (*targets)[i])
                           : checkAttribute(varList, targetIndex, weightIndex, (*attributes)[i]));
  }
  if (targets == nullptr) {
    return !statuses.empty();
  }
  return std::any_of(statuses.begin(), statuses.end(),
                     [](const MCStatus& status) { return status.IsOK(); });
}

}  // namespace MCBinning
