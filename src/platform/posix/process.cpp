#include "platform/process.h"

#include <unistd.h>

namespace MCBinning {

long currentProcess() noexcept { return ::getpid(); }

}  // namespace MCBinning
