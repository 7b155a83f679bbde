#include "toolkit/input/cells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
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

NumberReading readNumber(std::string_view cell, double& value) {
  std::string_view text = trimmed(cell);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) {
    return NumberReading::NotANumber;
  }
  if (error == std::errc::result_out_of_range) {
    // Too small for a double is 0 or a denormal to its last bit; too large is no number we hold.
    number = std::strtod(std::string(text).c_str(), nullptr);
    if (std::isinf(number)) return NumberReading::OutOfRange;
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
