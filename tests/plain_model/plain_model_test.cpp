// Random runs through the library and the plain model. MCB_SEED and MCB_RUNS choose the first seed
// and the number of runs; every run has the seed of its own that a failure prints.
#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <string>

#include "plain_model/comparison.h"
#include "support/random_runs.h"
#include "support/scratch_directory.h"

namespace plain_model {
namespace {

TEST(PlainModel, LibraryAgreesBitForBitOnRandomRuns) {
  const auto [seed, runs] = mcbinning_tests::RandomRuns(5000);
  const mcbinning_tests::ScratchDirectory directory;
  Events events;
  int differing = 0;
  for (std::uint64_t i = 0; i < runs && differing < 10; ++i) {
    RandomRun run = makeRandomRun(seed + i);
    const std::string difference = compareWithLibrary(run, directory.Path(), events);
    if (!difference.empty()) {
      ++differing;
      ADD_FAILURE() << "MCB_SEED=" << seed + i << " MCB_RUNS=1: " << difference
                    << (runs == 1 ? "\n" + describe(run) : "");
    }
  }
  for (std::size_t i = 0; i < kEventCount; ++i) {
    const auto event = static_cast<Event>(i);
    std::cout << "  " << eventName(event) << ": " << events.Of(event) << '\n';
    // The ordinary number of runs reaches everything; a few runs need not.
    if (runs >= 5000 && differing == 0) {
      EXPECT_GT(events.Of(event), 0U) << eventName(event);
    }
  }
}

}  // namespace
}  // namespace plain_model
