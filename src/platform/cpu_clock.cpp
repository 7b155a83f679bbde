#include "platform/cpu_clock.h"

#include <cstdint>

namespace MCBinning {

ClockReading readClock() { return std::clock(); }

double elapsedSeconds(ClockReading start, ClockReading now) {
  const std::int64_t ticks = static_cast<std::int64_t>(now) - static_cast<std::int64_t>(start);
  const std::int64_t milliseconds = ticks * 1000 / CLOCKS_PER_SEC;
  return static_cast<double>(static_cast<std::int32_t>(milliseconds)) / 1000.0;
}

double elapsedSeconds(ClockReading start) { return elapsedSeconds(start, readClock()); }

}  // namespace MCBinning
