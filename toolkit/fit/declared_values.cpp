#include "toolkit/fit/declared_values.h"

#include <fmt/format.h>

#include "toolkit/fit/target_classes.h"
#include "toolkit/text/number_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {

void DeclaredValues::Meet(double value) {
  // A column of numbers has a value for each of its texts.
  for (std::size_t i = 0; i < column_.missing.values.size(); ++i) {
    if (column_.missing.values[i] == value) isMet_[i] = true;
  }
  const auto& range = column_.missing.range;
  rangeIsMet_ = rangeIsMet_ || (range && range->first <= value && value <= range->second);
}

void DeclaredValues::Meet(std::string_view category) {
  for (std::size_t i = 0; i < isMet_.size(); ++i) {
    if (namesSameClass(column_.missingTexts[i], category)) isMet_[i] = true;
  }
}

std::map<std::size_t, std::string> DeclaredValues::NeverMet() const {
  std::map<std::size_t, std::string> notes;
  for (std::size_t i = 0; i < isMet_.size(); ++i) {
    if (isMet_[i]) continue;
    notes[i] = fmt::format("column {}: no case has the declared missing value {}",
                           excerpt(column_.name), excerpt(column_.missingTexts[i]));
  }
  if (column_.missing.range && !rangeIsMet_) {
    notes[isMet_.size()] =
        fmt::format("column {}: no case lies in the declared missing range {} to {}",
                    excerpt(column_.name), shortestNumber(column_.missing.range->first),
                    shortestNumber(column_.missing.range->second));
  }
  return notes;
}

}  // namespace mcbin
