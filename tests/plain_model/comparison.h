/// Runs a random run through the library's exported interface and through the plain model and
/// compares everything that a host can read.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_COMPARISON_H
#define MCBINNING_TESTS_PLAIN_MODEL_COMPARISON_H

#include <string>

#include "plain_model/events.h"
#include "plain_model/random_run.h"

namespace plain_model {

/// The first difference in words, empty when there is none. Doubles are compared bit by bit, except
/// that all NaN values are equal.
std::string compareWithLibrary(RandomRun& run, const std::string& tempDirectory, Events& events);

/// The whole run as text, for whoever has to reduce a difference.
std::string describe(const RandomRun& run);

}  // namespace plain_model

#endif
