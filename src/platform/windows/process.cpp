#include "platform/process.h"

#include <windows.h>

namespace MCBinning {

long currentProcess() noexcept { return static_cast<long>(GetCurrentProcessId()); }

}  // namespace MCBinning
