#include "supervised/selection.h"

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

MCStatus checkPair(const BINVarList& varList, int weight, int attribute, int target) {
  const IBINVariable* const targetVariable = varList.GetVarAt(target);
  if (targetVariable == nullptr || varList.GetVarAt(attribute) == nullptr) {
    return errorStatus(kNoSuchIndex);
  }
  if (!isCategorical(*targetVariable)) {
    return errorStatus(kTargetNotCategorical);
  }
  if (target == attribute || target == weight || attribute == weight) {
    return errorStatus(kSameOrWeightVariable);
  }
  return {};
}

MCStatus checkAttribute(const BINVarList& varList, int target, int weight, int attribute) {
  if (varList.GetVarAt(attribute) == nullptr) {
    return errorStatus(kAttributeOutOfRange);
  }
  if (attribute == weight || attribute == target) {
    return errorStatus(kSameOrWeightVariable);
  }
  return {};
}

void requestEach(const std::vector<int>& attributes, const BINVarList& varList, int target,
                 int weight, std::vector<Request>& requests) {
  for (const int attribute : attributes) {
    requests.push_back({attribute, target, checkAttribute(varList, target, weight, attribute)});
  }
}

bool isAnyAccepted(const std::vector<Request>& requests) {
  return std::any_of(requests.begin(), requests.end(),
                     [](const Request& request) { return request.status.IsOK(); });
}

}  // namespace

std::vector<Request> requestAll(const BINVarList& varList, int target, int weight) {
  std::vector<Request> requests;
  const int size = static_cast<int>(varList.Size());
  for (int attribute = 0; attribute < size; ++attribute) {
    if (attribute != target && attribute != weight) {
      requests.push_back({attribute, target, {}});
    }
  }
  return requests;
}

bool requestPairs(const Selection& selection, const BINVarList& varList, int target, int weight,
                  std::vector<Request>& requests) {
  const auto& [attributes, targets] = selection;
  requests.clear();
  if (attributes == nullptr || (targets != nullptr && targets->size() != attributes->size())) {
    return false;
  }
  if (targets == nullptr) {
    requestEach(*attributes, varList, target, weight, requests);
    return !requests.empty();
  }
  for (std::size_t i = 0; i < attributes->size(); ++i) {
    const int attribute = (*attributes)[i];
    const int ownTarget = (*targets)[i];
    requests.push_back({attribute, ownTarget, checkPair(varList, weight, attribute, ownTarget)});
  }
  return isAnyAccepted(requests);
}

bool requestAttributes(const std::vector<int>& attributes, const BINVarList& varList, int weight,
                       std::vector<Request>& requests) {
  requests.clear();
  requestEach(attributes, varList, kNoTarget, weight, requests);
  return isAnyAccepted(requests);
}

}  // namespace MCBinning
