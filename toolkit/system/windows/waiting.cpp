#include "toolkit/system/waiting.h"

#include <io.h>
#include <windows.h>

namespace mcbin {
namespace {

constexpr DWORD kMillisecondsPerLook = 10;  // a pipe cannot be waited for, only looked into
constexpr DWORD kMillisecondsPerWait = 200;

/// Whether reading from the pipe would block; false for what is no pipe.
bool isEmptyPipe(HANDLE file) {
  DWORD available = 0;
  return GetFileType(file) == FILE_TYPE_PIPE &&
         PeekNamedPipe(file, nullptr, 0, nullptr, &available, nullptr) != 0 && available == 0;
}

}  // namespace

void waitToRead(int descriptor, Monitor& monitor) {
  monitor.ThrowIfStopped();
  while (isEmptyPipe(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)))) {
    Sleep(kMillisecondsPerLook);
    monitor.ThrowIfStopped();
  }
}

void waitToWrite(int /*descriptor*/, Monitor& monitor) { monitor.ThrowIfStopped(); }

void pauseAndAsk(Monitor& monitor) {
  Sleep(kMillisecondsPerWait);
  monitor.ThrowIfStopped();
}

}  // namespace mcbin
