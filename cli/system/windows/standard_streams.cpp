#include "cli/system/standard_streams.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>

// Patterns of column names are the program's own: the C library leaves "*" in arguments alone.
extern "C" int _CRT_glob;
int _CRT_glob = 0;

namespace mcbin {

void openStandardStreams() {
  constexpr std::intptr_t kNoStream = -2;
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    const std::intptr_t handle = _get_osfhandle(descriptor);
    if (handle == kNoStream || reinterpret_cast<HANDLE>(handle) == INVALID_HANDLE_VALUE) {
      // The lowest free number is this one. Opened for the other direction, reading or writing
      // fails.
      _open(nullDevice(), descriptor == 0 ? _O_WRONLY : _O_RDONLY);
    }
    // The same bytes as everywhere, line ends included.
    _setmode(descriptor, _O_BINARY);
  }
  SetConsoleOutputCP(CP_UTF8);
}

const char* nullDevice() { return "NUL"; }

}  // namespace mcbin
