/// Long work as the user at a terminal sees and ends it.
#ifndef MCBIN_CLI_TEXT_TERMINAL_MONITOR_H
#define MCBIN_CLI_TEXT_TERMINAL_MONITOR_H

#include <string>

#include "cli/text/progress_bar.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// Draws progress on standard error; signals end the work with Interrupted.
class TerminalMonitor : public Monitor {
 public:
  void Update(const std::string& task, double share, double count, const char* unit) override;
  void Clear() override { bar_.Clear(); }
  bool StopRequested() override;
  void ThrowIfStopped() override;

 private:
  ProgressBar bar_;
};

}  // namespace mcbin

#endif
