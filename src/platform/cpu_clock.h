#ifndef MCBINNING_PLATFORM_CPU_CLOCK_H
#define MCBINNING_PLATFORM_CPU_CLOCK_H

#include <cstdint>

namespace MCBinning {

/// Processor time used by the process, in microseconds.
using ClockReading = std::int64_t;

ClockReading readClock();

/// Seconds from `start` to `now`: the whole milliseconds between them, truncated to a signed
/// 32-bit integer, divided by 1000.0.
double elapsedSeconds(ClockReading start, ClockReading now);

/// Seconds from `start` until this call, counted in the same way.
double elapsedSeconds(ClockReading start);

}  // namespace MCBinning

#endif
