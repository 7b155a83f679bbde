/// How numbers are written.
#ifndef MCBIN_TOOLKIT_TEXT_NUMBER_TEXT_H
#define MCBIN_TOOLKIT_TEXT_NUMBER_TEXT_H

#include <string>

namespace mcbin {

/// The shortest decimal text that reads back as the same double: 0.1, 42, 1e+300, inf, -inf.
std::string shortestNumber(double value);

/// A count of cases or a weight: whole numbers without a decimal point, others shortest.
std::string weightText(double weight);

/// A number with `digits` digits after the point.
std::string fixedNumber(double value, int digits);

/// A share as a percentage with one digit: "12.5%"; "-" when the total is 0.
std::string shareText(double part, double total);

}  // namespace mcbin

#endif
