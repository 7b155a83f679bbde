// Random runs through the library and the plain model. MCB_SEED and MCB_RUNS choose the first seed
// and the number of runs; every run has the seed of its own that a failure prints. The digest is of
// all results, for scripts/same_bits.sh.
#include <gtest/gtest.h>

#include <iostream>

#include "random/digest.h"
#include "random/random_runs.h"
#include "random/run_comparison.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {
namespace {

using plain_model::Event;

TEST(PlainModel, LibraryAgreesBitForBitOnRandomRuns) {
  const ScratchDirectory directory;
  plain_model::Events events;
  DigestingHost host;
  const RandomRuns random(5000);
  forRandomRuns(random, [&](Choices& choices) {
    RandomRun run = makeRandomRun(choices);
    try {
      compareWithLibrary(run, directory.Path(), host, events);
    } catch (const Difference&) {
      if (random.runs == 1) {
        std::cout << run;
      }
      throw;
    }
  });
  std::cout << "digest " << std::hex << host.Digest() << std::dec << '\n';
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
