#include "platform/cpu_clock.h"

#include <cstdint>

namespace MCBinning {

ClockReading ReadClock() { return std::clock(); }

double ElapsedSeconds(ClockReading start, ClockReading now) {
  const std::int64_t ticks = static_cast<std::int64_t>(now) - static_cast<std::int64_t>(start);
  const std::int64_t milliseconds = ticks * 1000 / CLOCKS_PER_SEC;
  return static_cast<double>(static_cast<std::int32_t>(milliseconds)) / 1000.0;
}

double ElapsedSeconds(ClockReading start) { return ElapsedSeconds(start, ReadClock()); }

}  // namespace MCBinning
