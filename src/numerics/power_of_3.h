#ifndef MCBINNING_NUMERICS_POWER_OF_3_H
#define MCBINNING_NUMERICS_POWER_OF_3_H

#include <cstddef>

namespace MCBinning {

constexpr std::size_t kLargestPowerOf3 = 512;  // two sides of a split, of 256 categories each

/// 3 to the power of an exponent up to kLargestPowerOf3, correctly rounded: exact up to 33.
double powerOf3(std::size_t exponent);

}  // namespace MCBinning

#endif
