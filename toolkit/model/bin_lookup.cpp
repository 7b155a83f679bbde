#include "toolkit/model/bin_lookup.h"

#include <algorithm>
#include <limits>

namespace mcbin {

std::size_t binOf(const std::vector<double>& cutPoints, ClosedSide side, double value) {
  const auto cut = side == ClosedSide::Right
                       ? std::lower_bound(cutPoints.begin(), cutPoints.end(), value)
                       : std::upper_bound(cutPoints.begin(), cutPoints.end(), value);
  return static_cast<std::size_t>(cut - cutPoints.begin());
}

Placement place(const AttributeModel& attribute, ClosedSide side, std::optional<double> value) {
  if (!value) return {Placement::Kind::Missing, 0};
  if (attribute.missing.Contains(*value)) return {Placement::Kind::UserMissing, 0};
  return {Placement::Kind::Bin, binOf(attribute.cutPoints, side, *value)};
}

int binNumber(const Placement& placement) {
  if (placement.kind == Placement::Kind::Bin) return static_cast<int>(placement.bin);
  return placement.kind == Placement::Kind::Missing ? kMissingBin : kUserMissingBin;
}

BinBounds boundsOf(const std::vector<double>& cutPoints, std::size_t bin) {
  BinBounds bounds = {-std::numeric_limits<double>::infinity(),
                      std::numeric_limits<double>::infinity()};
  if (bin > 0) bounds.lower = cutPoints[bin - 1];
  if (bin < cutPoints.size()) bounds.upper = cutPoints[bin];
  return bounds;
}

}  // namespace mcbin
