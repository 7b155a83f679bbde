#ifndef MCBINNING_TESTS_RANDOM_RANDOM_RUNS_H
#define MCBINNING_TESTS_RANDOM_RANDOM_RUNS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "random/agreement.h"
#include "random/choices.h"

namespace mcbinning_tests {

/// The first seed and the number of runs of a random test, as MCB_SEED and MCB_RUNS choose them;
/// printed, so that what failed can be run again. The runs have the seeds from the first one on.
struct RandomRuns {
  RandomRuns(std::uint64_t runsUnlessChosen)
      : seed(FromEnvironment("MCB_SEED", 1)), runs(FromEnvironment("MCB_RUNS", runsUnlessChosen)) {
    std::cout << "MCB_SEED=" << seed << " MCB_RUNS=" << runs << std::endl;
  }

  std::uint64_t seed;
  std::uint64_t runs;

 private:
  static std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtoull(text, nullptr, 10) : otherwise;
  }
};

/// Makes runs of choices until one fails, which says its seed.
template <typename Run>
void forRandomRuns(const RandomRuns& random, Run run) {
  for (std::uint64_t i = 0; i < random.runs && !testing::Test::HasFailure(); ++i) {
    SCOPED_TRACE("MCB_SEED=" + std::to_string(random.seed + i) + " MCB_RUNS=1");
    Choices choices(random.seed + i);
    try {
      run(choices);
    } catch (const Difference& difference) {
      ADD_FAILURE() << difference.what();
    }
  }
}

}  // namespace mcbinning_tests

#endif
