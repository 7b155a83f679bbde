#include "platform/process.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace MCBinning {

long currentProcess() noexcept { return static_cast<long>(GetCurrentProcessId()); }

}  // namespace MCBinning
