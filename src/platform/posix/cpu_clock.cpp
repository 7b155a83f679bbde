#include "platform/cpu_clock.h"

#include <ctime>

namespace MCBinning {

static_assert(CLOCKS_PER_SEC == 1'000'000);  // as POSIX has it

ClockReading readClock() { return std::clock(); }

}  // namespace MCBinning
