#include "platform/cpu_clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <thread>

namespace {

using MCBinning::ClockReading;
using MCBinning::elapsedSeconds;
using MCBinning::readClock;

constexpr ClockReading kMillisecond = 1000;

TEST(CpuClockTest, ElapsedTimeIsCountedInWholeMilliseconds) {
  EXPECT_EQ(elapsedSeconds(5, 5), 0.0);
  EXPECT_EQ(elapsedSeconds(0, kMillisecond - 1), 0.0);
  EXPECT_EQ(elapsedSeconds(7, 7 + kMillisecond), 0.001);
  EXPECT_EQ(elapsedSeconds(0, 1234 * kMillisecond + kMillisecond / 2), 1.234);
}

TEST(CpuClockTest, ElapsedTimeIsTruncatedTo32BitsOfMilliseconds) {
  const ClockReading largest = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(elapsedSeconds(0, largest * kMillisecond), 2147483.647);
  EXPECT_EQ(elapsedSeconds(0, (largest + 1) * kMillisecond), -2147483.648);
}

TEST(CpuClockTest, TimeNeverRunsBackwards) {
  const ClockReading start = readClock();
  EXPECT_GE(elapsedSeconds(start), 0.0);
  EXPECT_GE(readClock(), start);
}

TEST(CpuClockTest, WorkIsCountedAndWaitingIsNot) {
  using Clock = std::chrono::steady_clock;
  const ClockReading start = readClock();
  const auto deadline = Clock::now() + std::chrono::seconds(20);
  while (readClock() == start && Clock::now() < deadline) {
  }
  const ClockReading worked = readClock();
  EXPECT_GT(worked, start);
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_LT(elapsedSeconds(worked), 0.2);
}

}  // namespace
