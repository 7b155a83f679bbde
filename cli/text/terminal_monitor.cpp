#include "cli/text/terminal_monitor.h"

#include "cli/system/interrupt.h"

namespace mcbin {

void TerminalMonitor::Update(const std::string& task, double share, double count,
                             const char* unit) {
  bar_.Update(task, share, count, unit);
}

bool TerminalMonitor::StopRequested() { return interruptSignal() != 0; }

void TerminalMonitor::ThrowIfStopped() { throwIfInterrupted(); }

}  // namespace mcbin
