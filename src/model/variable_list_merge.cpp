#include <algorithm>
#include <cstddef>

#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "mcbinning/variable_list.h"

namespace {

bool hasSameUserMissing(const IBINVariable& left, const IBINVariable& right) {
  const IBINUserMissing* own = left.GetUserMissingInfo();
  const IBINUserMissing* theirs = right.GetUserMissingInfo();
  return own != nullptr ? own->IsEqualTo(theirs) : theirs == nullptr;
}

bool hasCodeForEveryCategory(const IBINVariable& variable) {
  return variable.GetNumberOfCategories() == variable.GetEncoder()->GetNumberOfCategories();
}

bool canMerge(const IBINVariable& left, const IBINVariable& right) {
  if (left.GetVariableName() != right.GetVariableName() ||
      left.GetVariableLabel() != right.GetVariableLabel() ||
      left.GetVariableRole() != right.GetVariableRole() ||
      left.GetMeasureLevel() != right.GetMeasureLevel()) {
    return false;
  }
  const auto role = left.GetVariableRole();
  if (role != IBINVariable::AttributeRole && role != IBINVariable::TargetRole) {
    return true;
  }
  return hasSameUserMissing(left, right) &&
         (left.GetMeasureLevel() == IBINVariable::ContinuousLevel ||
          (hasCodeForEveryCategory(left) && hasCodeForEveryCategory(right)));
}

}  // namespace

bool BINVarList::CanMergeWith(const BINVarList& other, int& where) const {
  if (Size() != other.Size()) {
    where = static_cast<int>(std::min(Size(), other.Size()));
    return false;
  }
  if (targetIndex_ != other.targetIndex_) {
    where = std::min(targetIndex_, other.targetIndex_);
    return false;
  }
  for (std::size_t i = 0; i < variables_.size(); ++i) {
    if (!canMerge(*variables_[i], *other.variables_[i])) {
      where = static_cast<int>(i);
      return false;
    }
  }
  return true;
}
