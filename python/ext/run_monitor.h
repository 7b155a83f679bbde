/// Long work and the interpreter.
#ifndef MCBIN_PYTHON_RUN_MONITOR_H
#define MCBIN_PYTHON_RUN_MONITOR_H

#include <nanobind/nanobind.h>

#include <chrono>
#include <exception>
#include <string>

#include "toolkit/monitor.h"

namespace mcbin::python {

/// Lets signals through and tells a Python callable of progress, ten times a second at most. Used
/// with the interpreter lock released. What a signal handler or the callable raises stops the work
/// and comes up in ThrowIfStopped.
class RunMonitor : public Monitor {
 public:
  /// `progress` is None or takes (task, share, count, unit); share is None when not known.
  explicit RunMonitor(nanobind::object progress) : progress_(std::move(progress)) {}

  void Update(const std::string& task, double share, double count, const char* unit) override;
  bool StopRequested() override;
  void ThrowIfStopped() override;

 private:
  using Clock = std::chrono::steady_clock;

  bool IsDue();
  template <class Action>
  void WithInterpreter(const Action& action);

  nanobind::object progress_;
  std::exception_ptr raised_;
  unsigned queries_ = 0;
  Clock::time_point lastVisit_ = Clock::now();
  Clock::time_point lastUpdate_;
};

}  // namespace mcbin::python

#endif
