/// The functions that the rules take from mathematics, by another library's hand: the double
/// nearest to the exact value.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_CORRECT_ROUNDING_H
#define MCBINNING_TESTS_PLAIN_MODEL_CORRECT_ROUNDING_H

namespace plain_model {

double nearestLog2(double x);
double nearestLog2WithoutShortcut(double x);
double nearestPowerOf3(int exponent);

}  // namespace plain_model

#endif
