#ifndef MCBINNING_TESTS_RANDOM_EQUAL_FREQUENCY_STEPS_H
#define MCBINNING_TESTS_RANDOM_EQUAL_FREQUENCY_STEPS_H

#include "random/choices.h"

namespace mcbinning_tests {

/// Makes rows, a number of bins and a total weight and cuts them by the library's routine and by
/// the plain model, which must give the same cut points and bin weights; a Difference is thrown.
/// Rows come either from cases, whatever their order, or as they are, whatever their values and
/// weights.
void stepsOfEqualFrequency(Choices& choices);

}  // namespace mcbinning_tests

#endif
