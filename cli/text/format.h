/// How numbers and intervals are written.
#ifndef MCBIN_TEXT_FORMAT_H
#define MCBIN_TEXT_FORMAT_H

#include <string>

#include "model/model.h"

namespace mcbin {

/// The shortest decimal text that reads back as the same double: 0.1, 42, 1e+300, inf, -inf.
std::string shortestNumber(double value);

/// A count of cases or a weight: whole numbers without a decimal point, others shortest.
std::string weightText(double weight);

/// A number with `digits` digits after the point.
std::string fixedNumber(double value, int digits);

/// A share as a percentage with one digit: "12.5%"; "-" when the total is 0.
std::string shareText(double part, double total);

/// "(-inf, 3.5]", "(3.5, 7]", "(7, inf)"; with Left "[3.5, 7)". A model without cut points has the
/// one bin "(-inf, inf)".
std::string intervalText(const std::vector<double>& cutPoints, ClosedSide side, std::size_t bin);

}  // namespace mcbin

#endif
