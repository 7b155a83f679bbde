#ifndef MCBINNING_TESTS_SUPPORT_RANDOM_RUNS_H
#define MCBINNING_TESTS_SUPPORT_RANDOM_RUNS_H

#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace mcbinning_tests {

/// The first seed and the number of runs of a random test, as MCB_SEED and MCB_RUNS choose them;
/// printed, so that what failed can be run again. The runs have the seeds from the first one on.
struct RandomRuns {
  explicit RandomRuns(std::uint64_t runsUnlessChosen)
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

}  // namespace mcbinning_tests

#endif
