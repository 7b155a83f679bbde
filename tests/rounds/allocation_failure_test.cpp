// Every allocation of a run in rounds is made to fail in turn.
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "mcbinning/rounds.h"
#include "support/allocation_hooks.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

/// A small run with its engine. A failed call ends it with the status of that call.
template <typename Settings>
MCStatus runAll(const Settings& settings, const BINRoundsPlan& plan, const BINRoundCases& cases,
                int categories, BINRounds& rounds) {
  MCStatus status = rounds.Start(settings, plan);
  while (!status.IsError() && !rounds.IsFinished()) {
    BINRoundCounter counter;
    BINRoundAnswer part;
    BINRoundAnswer answer;
    status = counter.Prepare(rounds.GetQuestion(), categories);
    for (int i = 0; i < 2 && status.IsOK(); ++i) {
      part = BINRoundAnswer();
      status = counter.Count(cases, part);
      if (status.IsOK()) {
        status = BINRoundCounter::Add(part, answer);
      }
    }
    if (status.IsOK()) {
      status = rounds.Answer(answer);
    }
  }
  return status;
}

template <typename Settings>
void failEveryAllocation(Settings settings, int categories) {
  settings.SetNumberOfBins(4);
  std::vector<double> values;
  std::vector<int> codes;
  for (int i = 0; i < 60; ++i) {
    values.push_back(i + 0.5);
    codes.push_back(i < 30 ? 0 : 1);
  }
  BINRoundsPlan plan;
  plan.attributes = {{0, {20.0, 40.0}}};
  plan.target = 1;
  plan.categories = 2;
  plan.mostFetched = 5;
  const BINRoundCases cases = {
      60, categories == 1 ? nullptr : codes.data(), nullptr, {values.data()}, {}};
  int failures = 0;
  for (std::size_t call = 1;; ++call) {
    const std::size_t before = LiveAllocations();
    MCStatus status;
    {
      BINRounds rounds;
      {
        const OneAllocationFails fault(call);
        status = runAll(settings, plan, cases, categories, rounds);
      }
      std::vector<BINAttributeTargetResults> records;
      EXPECT_EQ(rounds.IsFinished(), !status.IsError());
      EXPECT_TRUE(rounds.IsFinished() || rounds.GetOutput().GetAllCutPoints(records).IsError());
    }
    EXPECT_EQ(LiveAllocations(), before);
    if (!status.IsError()) {
      break;
    }
    ASSERT_EQ(status.GetErrorCode(), 3);
    ++failures;
  }
  EXPECT_GT(failures, 100);
}

TEST(RoundsAllocationFailureTest, SupervisedRunEndsWithItsStatusAndLeaksNothing) {
  failEveryAllocation(BINSettings(), 2);
}

TEST(RoundsAllocationFailureTest, EqualFrequencyRunEndsWithItsStatusAndLeaksNothing) {
  failEveryAllocation(EFBINSettings(), 1);
}

}  // namespace
}  // namespace mcbinning_tests
