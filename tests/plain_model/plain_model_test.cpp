// Random runs through the library and the plain model. MCB_SEED and MCB_RUNS choose the first seed
// and the number of runs; every run has the seed of its own that a failure prints.
#include <gtest/gtest.h>

#include <iostream>

#include "random/random_runs.h"
#include "random/run_comparison.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {
namespace {

using plain_model::Event;

TEST(PlainModel, LibraryAgreesBitForBitOnRandomRuns) {
  const ScratchDirectory directory;
  plain_model::Events events;
  const RandomRuns random(5000);
  forRandomRuns(random, [&](Choices& choices) {
    RandomRun run = makeRandomRun(choices);
    try {
      compareWithLibrary(run, directory.Path(), events);
    } catch (const Difference&) {
      if (random.runs == 1) {
        std::cout << run;
      }
      throw;
    }
  });
  for (std::size_t i = 0; i < plain_model::kEventCount; ++i) {
    const auto event = static_cast<Event>(i);
    std::cout << "  " << eventName(event) << ": " << events.Of(event) << '\n';
    // The ordinary number of runs reaches everything; a few runs need not.
    if (random.runs >= 5000 && !HasFailure()) {
      EXPECT_GT(events.Of(event), 0U) << eventName(event);
    }
  }
}

}  // namespace
}  // namespace mcbinning_tests
