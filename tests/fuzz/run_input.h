/// Variable lists, cases, settings and selections made of any bytes.
#ifndef MCBINNING_TESTS_FUZZ_RUN_INPUT_H
#define MCBINNING_TESTS_FUZZ_RUN_INPUT_H

#include "fuzz/input.h"
#include "plain_model/random_run.h"

namespace fuzz {

plain_model::RandomRun makeRun(Input& input);

}  // namespace fuzz

#endif
