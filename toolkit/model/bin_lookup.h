/// Which bin a value falls into.
#ifndef MCBIN_TOOLKIT_MODEL_BIN_LOOKUP_H
#define MCBIN_TOOLKIT_MODEL_BIN_LOOKUP_H

#include <cstddef>
#include <optional>
#include <vector>

#include "toolkit/model/model.h"

namespace mcbin {

/// Where a case's value of one attribute belongs. `bin` counts from 0 and is meaningful for Bin.
struct Placement {
  enum class Kind { Missing, UserMissing, Bin };
  Kind kind = Kind::Missing;
  std::size_t bin = 0;
};

/// The bin of `value`, which must not be NaN: the lowest bin reaches down to minus infinity, the
/// highest up to plus infinity, and a value on a cut point goes to the side that is closed.
std::size_t binOf(const std::vector<double>& cutPoints, ClosedSide side, double value);

/// Places a value of `attribute`; an empty value is missing.
Placement place(const AttributeModel& attribute, ClosedSide side, std::optional<double> value);

/// What stands for a placement where bins are numbers: 0, 1, ...; -1 for missing and -2 for
/// user-missing.
inline constexpr int kMissingBin = -1;
inline constexpr int kUserMissingBin = -2;
int binNumber(const Placement& placement);

/// The ends of a bin. An end beyond the first or last cut point is an infinity.
struct BinBounds {
  double lower;
  double upper;
};
BinBounds boundsOf(const std::vector<double>& cutPoints, std::size_t bin);

}  // namespace mcbin

#endif
