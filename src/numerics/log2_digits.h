#ifndef MCBINNING_NUMERICS_LOG2_DIGITS_H
#define MCBINNING_NUMERICS_LOG2_DIGITS_H

#include <cstddef>
#include <cstdint>

namespace MCBinning {

/// The double nearest to log2(2^exponent * significand / 2^52), for a significand of 53 bits other
/// than 2^52, that is, for any argument whose logarithm is no whole number. Takes microseconds.
/// `words` is how many words of 32 bits it calculates with at first; it takes as many as it needs.
double log2ByDigits(std::int64_t exponent, std::uint64_t significand, std::size_t words = 6);

}  // namespace MCBinning

#endif
