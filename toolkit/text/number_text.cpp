#include "toolkit/text/number_text.h"

#include <fmt/format.h>

namespace mcbin {

std::string shortestNumber(double value) {
  if (value == 0.0) return "0";
  return fmt::format("{}", value);
}

std::string weightText(double weight) { return shortestNumber(weight); }

std::string fixedNumber(double value, int digits) { return fmt::format("{:.{}f}", value, digits); }

std::string shareText(double part, double total) {
  if (!(total > 0.0)) return "-";
  // A hundred times a weight near the largest double would be infinite.
  const double percent = part < 1e300 ? 100.0 * part / total : part / total * 100.0;
  return fmt::format("{:.1f}%", percent);
}

}  // namespace mcbin
