/// The short way to read the numbers that most tables are full of.
#ifndef MCBIN_TOOLKIT_INPUT_PLAIN_DECIMAL_H
#define MCBIN_TOOLKIT_INPUT_PLAIN_DECIMAL_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mcbin {

inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::uint64_t kLargestExactWhole = std::uint64_t{1} << 53U;
inline constexpr std::size_t kMostDigits = 19;  // as many as surely fit 64 bits

/// Reads digits with at most one point and a minus sign in front. False for anything else, and for
/// more digits than give the nearest double by one division of exactly held numbers.
inline bool readPlainDecimal(std::string_view text, double& value) {
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

}  // namespace mcbin

#endif
