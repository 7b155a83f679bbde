#include "input/cells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <system_error>

namespace mcbin {
namespace {

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::uint64_t kLargestExactWhole = std::uint64_t{1} << 53U;
constexpr std::size_t kMostDigits = 19;  // as many as surely fit 64 bits

/// Reads digits with at most one point and a minus sign in front. False for anything else, and for
/// more digits than give the nearest double by one division of exactly held numbers.
bool readPlainDecimal(std::string_view text, double& value) {
  const bool isNegative = !text.empty() && text.front() == '-';
  if (isNegative) text.remove_prefix(1);
  if (text.empty() || text.size() > kMostDigits) return false;
  std::uint64_t whole = 0;
  std::size_t pointAt = text.size();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      whole = 10 * whole + static_cast<std::uint64_t>(c - '0');
    } else if (c == '.' && pointAt == text.size() && text.size() > 1) {
      pointAt = i;
    } else {
      return false;
    }
  }
  if (whole > kLargestExactWhole) return false;
  const std::size_t decimals = pointAt == text.size() ? 0 : text.size() - pointAt - 1;
  const double magnitude = static_cast<double>(whole) / kPowersOfTen[decimals];
  value = isNegative ? -magnitude : magnitude;
  return true;
}

}  // namespace

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
  return text.empty() || std::find(naTexts.begin(), naTexts.end(), text) != naTexts.end();
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

CellKind ScaleCells::Read(std::string_view cell, double& value) const {
  if (!numbersMayBeMissing_ && readPlainDecimal(cell, value)) return CellKind::Number;
  if (isMissingCell(cell, naTexts_)) return CellKind::Missing;
  switch (readNumber(cell, value)) {
    case NumberReading::Number:
      return CellKind::Number;
    case NumberReading::OutOfRange:
      return CellKind::OutOfRange;
    case NumberReading::NotANumber:
      break;
  }
  return CellKind::Text;
}

}  // namespace mcbin
