#ifndef MCBINNING_NUMERICS_LOG2_H
#define MCBINNING_NUMERICS_LOG2_H

namespace MCBinning {

/// The base-2 logarithm, correctly rounded: the double nearest to the exact value, so the same bits
/// from every compiler, processor and C library. Minus infinity of a zero of either sign, NaN of
/// anything below and of NaN. Assumes the default floating-point environment (round to nearest, no
/// flushing of subnormals). One argument in some millions costs microseconds and allocates; only
/// then can std::bad_alloc be thrown.
double roundedLog2(double x);

/// Quicker, for bounds: wrong by at most 2^-53 (|log2 x| + 2), otherwise the same.
double quickLog2(double x);

}  // namespace MCBinning

#endif
