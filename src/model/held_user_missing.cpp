#include "model/held_user_missing.h"

#include <ostream>

namespace MCBinning {

namespace {

template <typename Definition, typename Value>
bool contains(const IBINUserMissing* definition, const Value& value) {
  if (definition == nullptr) {
    return false;
  }
  const auto* own = dynamic_cast<const Definition*>(definition);
  return own != nullptr && own->Contains(value);
}

}  // namespace

bool isUserMissing(const IBINUserMissing* definition, double value) {
  return contains<BINNumericUserMissing>(definition, value);
}

bool isUserMissing(const IBINUserMissing* definition, const std::string& value) {
  return contains<BINStringUserMissing>(definition, value);
}

bool replaceUserMissing(std::unique_ptr<IBINUserMissing>& held, IBINUserMissing* definition,
                        IBINUserMissing::DataType accepted) {
  if (definition == held.get()) {
    return true;
  }
  if (definition != nullptr && definition->GetDataType() != accepted) {
    return false;
  }
  held.reset(definition);
  return true;
}

std::unique_ptr<IBINUserMissing> cloneUserMissing(const IBINUserMissing* definition) {
  return std::unique_ptr<IBINUserMissing>(definition != nullptr ? definition->Clone() : nullptr);
}

void displayUserMissing(std::ostream& os, const IBINUserMissing* definition) {
  if (definition != nullptr) {
    os << "\t\tUser-missing values for this encoder:\n\t\t";
    definition->Display(os);
  }
}

}  // namespace MCBinning
