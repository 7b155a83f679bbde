#include "python/ext/run_monitor.h"

#include <nanobind/stl/string.h>

namespace mcbin::python {
namespace nb = nanobind;
namespace {

constexpr std::chrono::milliseconds kInterval(100);
/// The library asks before every case; the clock is not looked at as often.
constexpr unsigned kQueriesPerClock = 256;

}  // namespace

template <class Action>
void RunMonitor::WithInterpreter(const Action& action) {
  const nb::gil_scoped_acquire lock;
  try {
    if (PyErr_CheckSignals() != 0) throw nb::python_error();
    action();
  } catch (...) {
    if (!raised_) raised_ = std::current_exception();
  }
}

bool RunMonitor::IsDue() {
  const Clock::time_point now = Clock::now();
  if (now - lastVisit_ < kInterval) return false;
  lastVisit_ = now;
  return true;
}

void RunMonitor::Update(const std::string& task, double share, double count, const char* unit) {
  if (raised_) return;
  // Between two attributes the library asks too rarely for StopRequested to look at the clock.
  if (IsDue()) WithInterpreter([] {});
  if (progress_.is_none() || raised_) return;
  const Clock::time_point now = Clock::now();
  if (now - lastUpdate_ < kInterval && share < 1.0) return;
  lastUpdate_ = now;
  WithInterpreter([&] {
    const nb::object known = share < 0.0 ? nb::none() : nb::object(nb::float_(share));
    progress_(task, known, count, unit);
  });
}

bool RunMonitor::StopRequested() {
  if (raised_) return true;
  if (++queries_ % kQueriesPerClock == 0 && IsDue()) WithInterpreter([] {});
  return static_cast<bool>(raised_);
}

void RunMonitor::ThrowIfStopped() {
  if (!raised_ && IsDue()) WithInterpreter([] {});
  if (raised_) std::rethrow_exception(raised_);
}

}  // namespace mcbin::python
