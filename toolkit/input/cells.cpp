#include "toolkit/input/cells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "toolkit/text/number_text.h"
#include "toolkit/text/utf8.h"

namespace mcbin {
const std::vector<std::string>& defaultNaTexts() {
  static const std::vector<std::string> texts = {"NA", "N/A", "NaN", "nan", "NULL", "null", "?"};
  return texts;
}

std::string_view trimmed(std::string_view cell) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = cell.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return cell.substr(first, cell.find_last_not_of(kBlanks) - first + 1);
}

bool isMissingCell(std::string_view cell, const std::vector<std::string>& naTexts) {
  const std::string_view text = trimmed(cell);
  const auto isNamed = [&](std::string_view name) {
    return std::find(naTexts.begin(), naTexts.end(), name) != naTexts.end();
  };
  if (text.empty() || isNamed(text)) return true;
  const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
  return !isAscii && isNamed(asUtf8(text));
}

namespace {

/// Whether a number that no double holds is too small rather than too large. The C library would
/// tell, too, but reads points as the user's language has them.
bool isTooSmall(std::string_view number) {
  const std::size_t end = std::min(number.find_first_of("eE"), number.size());
  const auto point = static_cast<long long>(std::min(number.find('.'), end));
  const auto firstDigit = static_cast<long long>(number.find_first_of("123456789"));
  std::string_view exponentText = number.substr(std::min(end + 1, number.size()));
  if (!exponentText.empty() && exponentText.front() == '+') exponentText.remove_prefix(1);
  long long exponent = 0;
  const auto [stop, error] =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (error == std::errc::result_out_of_range) return exponentText.front() == '-';
  return exponent < firstDigit - point;
}

}  // namespace

NumberReading readNumber(std::string_view cell, double& value) {
  std::string_view text = trimmed(cell);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) {
    return NumberReading::NotANumber;
  }
  if (error == std::errc::result_out_of_range) {
    if (!isTooSmall(text)) return NumberReading::OutOfRange;
    number = text.front() == '-' ? -0.0 : 0.0;
  }
  if (std::isnan(number)) return NumberReading::NotANumber;
  value = number;
  return NumberReading::Number;
}

ScaleCells::ScaleCells(const std::vector<std::string>& naTexts)
    : naTexts_(naTexts),
      numbersMayBeMissing_(std::any_of(naTexts.begin(), naTexts.end(), [](const auto& text) {
        double ignored = 0.0;
        return readNumber(text, ignored) == NumberReading::Number;
      })) {}

CellKind ScaleCells::OfAnyNumber(double number) const {
  return isMissingCell(shortestNumber(number), naTexts_) ? CellKind::Missing : CellKind::Number;
}

CellKind ScaleCells::ReadAnyCell(std::string_view cell, double& value) const {
  if (numbersMayBeMissing_ && isMissingCell(cell, naTexts_)) return CellKind::Missing;
  const NumberReading reading = readNumber(cell, value);
  if (reading == NumberReading::Number) return CellKind::Number;
  if (isMissingCell(cell, naTexts_)) return CellKind::Missing;
  return reading == NumberReading::OutOfRange ? CellKind::OutOfRange : CellKind::Text;
}

}  // namespace mcbin
