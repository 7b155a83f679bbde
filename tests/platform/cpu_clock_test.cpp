#include "platform/cpu_clock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

using MCBinning::ClockReading;
using MCBinning::elapsedSeconds;

constexpr ClockReading kMillisecond = CLOCKS_PER_SEC / 1000;

TEST(CpuClockTest, ElapsedTimeIsCountedInWholeMilliseconds) {
  EXPECT_EQ(elapsedSeconds(5, 5), 0.0);
  EXPECT_EQ(elapsedSeconds(0, kMillisecond - 1), 0.0);
  EXPECT_EQ(elapsedSeconds(7, 7 + kMillisecond), 0.001);
  EXPECT_EQ(elapsedSeconds(0, 1234 * kMillisecond + kMillisecond / 2), 1.234);
}

TEST(CpuClockTest, ElapsedTimeIsTruncatedTo32BitsOfMilliseconds) {
  const ClockReading largest = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(elapsedSeconds(0, largest * kMillisecond), 2147483.647);
  const std::int64_t beyond = (std::int64_t{largest} + 1) * kMillisecond;
  if (beyond <= std::numeric_limits<ClockReading>::max()) {
    EXPECT_EQ(elapsedSeconds(0, static_cast<ClockReading>(beyond)), -2147483.648);
  }
}

TEST(CpuClockTest, TimeNeverRunsBackwards) {
  const ClockReading start = MCBinning::readClock();
  EXPECT_GE(elapsedSeconds(start), 0.0);
  EXPECT_GE(MCBinning::readClock(), start);
}

}  // namespace
