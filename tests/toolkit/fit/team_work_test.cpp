#include "toolkit/fit/team_work.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace mcbin {
namespace {

void waitUntil(const std::atomic<bool>& isTrue) {
  while (!isTrue) std::this_thread::yield();
}

TEST(TeamWork, EveryMemberWorksOnce) {
  std::vector<int> done(5, 0);
  std::atomic<bool> isAbandoned = false;
  workTogether(
      5, [&](std::size_t member) { ++done[member]; }, [] {}, isAbandoned);
  EXPECT_EQ(done, std::vector<int>(5, 1));
  EXPECT_FALSE(isAbandoned);
}

TEST(TeamWork, TheFirstFailureEndsTheOthersAndIsThrown) {
  std::atomic<bool> isAbandoned = false;
  const auto work = [&](std::size_t member) {
    if (member == 1) throw std::string("first");
    waitUntil(isAbandoned);
    throw Abandoned();
  };
  EXPECT_THROW(workTogether(
                   3, work, [] {}, isAbandoned),
               std::string);
}

TEST(TeamWork, WhatTheWatchThrowsEndsAll) {
  std::atomic<bool> isAbandoned = false;
  const auto work = [&](std::size_t) { waitUntil(isAbandoned); };
  EXPECT_THROW(workTogether(
                   2, work, [] { throw 7; }, isAbandoned),
               int);
}

}  // namespace
}  // namespace mcbin
