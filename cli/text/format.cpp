#include "text/format.h"

#include <fmt/format.h>

#include <cmath>

#include "model/bin_lookup.h"

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

std::string intervalText(const std::vector<double>& cutPoints, ClosedSide side, std::size_t bin) {
  const BinBounds bounds = boundsOf(cutPoints, bin);
  const bool first = bin == 0;
  const bool last = bin == cutPoints.size();
  const char* const open = side == ClosedSide::Left && !first ? "[" : "(";
  const char* const close = side == ClosedSide::Right && !last ? "]" : ")";
  return open + shortestNumber(bounds.lower) + ", " + shortestNumber(bounds.upper) + close;
}

}  // namespace mcbin
