#include "platform/process.h"

#include <unistd.h>

namespace MCBinning {

long CurrentProcess() noexcept { return ::getpid(); }

}  // namespace MCBinning
