#include "platform/cpu_clock.h"

namespace MCBinning {

double elapsedSeconds(ClockReading start, ClockReading now) {
  const ClockReading milliseconds = (now - start) / 1000;
  return static_cast<double>(static_cast<std::int32_t>(milliseconds)) / 1000.0;
}

double elapsedSeconds(ClockReading start) { return elapsedSeconds(start, readClock()); }

}  // namespace MCBinning
