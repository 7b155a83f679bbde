/// Who watches long work.
#ifndef MCBIN_TOOLKIT_MONITOR_H
#define MCBIN_TOOLKIT_MONITOR_H

#include <string>

namespace mcbin {

/// Told now and then how far reading and binning have come, and asked whether to go on. Called on
/// the thread that does the work. This one watches nothing.
class Monitor {
 public:
  Monitor() = default;
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;
  virtual ~Monitor() = default;

  /// `share` is the part of `task` done, 0 to 1, negative when not known; `count` things called
  /// `unit` are done.
  virtual void Update(const std::string& /*task*/, double /*share*/, double /*count*/,
                      const char* /*unit*/) {}

  /// The task that was last told of has ended.
  virtual void Clear() {}

  /// Whether the work is to be given up. Must not throw.
  virtual bool StopRequested() { return false; }

  /// Throws Interrupted, or what the front door wants to see thrown, when the work is to be given
  /// up; loops over cases call it.
  virtual void ThrowIfStopped() {}
};

}  // namespace mcbin

#endif
