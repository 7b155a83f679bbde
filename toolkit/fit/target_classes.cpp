#include "toolkit/fit/target_classes.h"

#include <algorithm>

#include "toolkit/input/cells.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

constexpr std::ptrdiff_t kMostClassDigits =
    15;  // decimals that differ are then doubles that differ

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool hasLeadingZero(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  return text.size() > 1 && text[0] == '0' && isDigit(text[1]);
}

}  // namespace

std::optional<double> classNumber(std::string_view text) {
  const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
  const std::ptrdiff_t digits = std::count_if(mantissa.begin(), mantissa.end(), isDigit);
  double value = 0.0;
  if (digits == 0 || digits > kMostClassDigits || hasLeadingZero(text) ||
      readNumber(text, value) != NumberReading::Number) {
    return std::nullopt;
  }
  return value == 0.0 ? 0.0 : value;
}

bool namesSameClass(std::string_view a, std::string_view b) {
  if (a == b) return true;
  const std::optional<double> number = classNumber(a);
  return number && number == classNumber(b);
}

bool TargetClasses::Add(std::string_view text) {
  if (Has(text)) return true;
  texts_.emplace(text);
  const std::optional<double> number = classNumber(text);
  isNumeric_ = isNumeric_ && number;
  if (number) numbers_.insert(*number);
  return (isNumeric_ ? numbers_.size() : texts_.size()) <= kMaxClasses;
}

std::vector<std::string> TargetClasses::Names() const {
  if (!isNumeric_) return SortedTexts();
  std::vector<std::string> names;
  for (const double number : numbers_) names.push_back(shortestNumber(number));
  return names;
}

ClassCodes TargetClasses::Codes() const {
  ClassCodes codes;
  for (const std::string& text : SortedTexts()) {
    const auto code = isNumeric_
                          ? std::distance(numbers_.begin(), numbers_.find(*classNumber(text)))
                          : static_cast<std::ptrdiff_t>(codes.size());
    codes.emplace(text, static_cast<int>(code));
  }
  return codes;
}

std::vector<std::string> TargetClasses::SortedTexts() const {
  std::vector<std::string> texts(texts_.begin(), texts_.end());
  std::sort(texts.begin(), texts.end());
  return texts;
}

}  // namespace mcbin
