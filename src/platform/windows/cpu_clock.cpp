#include "platform/cpu_clock.h"

#include <windows.h>

namespace MCBinning {
namespace {

ClockReading microseconds(const FILETIME& time) {
  constexpr ClockReading kUnitsPerMicrosecond = 10;
  const ULARGE_INTEGER units = {{time.dwLowDateTime, time.dwHighDateTime}};
  return static_cast<ClockReading>(units.QuadPart) / kUnitsPerMicrosecond;
}

}  // namespace

// clock() tells here how long the process has been there.
ClockReading readClock() {
  FILETIME begin{};
  FILETIME end{};
  FILETIME inSystem{};
  FILETIME inProcess{};
  if (GetProcessTimes(GetCurrentProcess(), &begin, &end, &inSystem, &inProcess) == 0) {
    return 0;
  }
  return microseconds(inSystem) + microseconds(inProcess);
}

}  // namespace MCBinning
