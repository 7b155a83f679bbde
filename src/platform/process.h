#ifndef MCBINNING_PLATFORM_PROCESS_H
#define MCBINNING_PLATFORM_PROCESS_H

namespace MCBinning {

/// What the system calls this process; a forked copy has another number. Never 0.
long currentProcess() noexcept;

}  // namespace MCBinning

#endif
