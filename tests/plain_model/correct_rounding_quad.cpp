// Where there is no MPFR: the 113 bits of the compiler's own type leave one argument in 2^59 or so
// whose nearest double they do not tell.
#include <quadmath.h>

#include "plain_model/correct_rounding.h"

namespace plain_model {

double nearestLog2(double x) { return static_cast<double>(log2q(x)); }

double nearestLog2WithoutShortcut(double x) { return nearestLog2(x); }

double nearestPowerOf3(int exponent) { return static_cast<double>(powq(3, exponent)); }

}  // namespace plain_model
