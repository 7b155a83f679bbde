/// Work that several threads share.
#ifndef MCBIN_TOOLKIT_FIT_TEAM_WORK_H
#define MCBIN_TOOLKIT_FIT_TEAM_WORK_H

#include <atomic>
#include <cstddef>
#include <functional>
#include <stdexcept>

namespace mcbin {

/// What ends work whose result nobody wants any more.
struct Abandoned : std::runtime_error {
  Abandoned() : std::runtime_error("abandoned") {}
};

/// Calls `work` with 0 to `members` - 1, each on a thread of its own, and on this one `watch` now
/// and then until all have ended. When any of these throws, `isAbandoned` becomes true, on which
/// the others are to throw Abandoned; then the first that was thrown is thrown.
void workTogether(std::size_t members, const std::function<void(std::size_t)>& work,
                  const std::function<void()>& watch, std::atomic<bool>& isAbandoned);

}  // namespace mcbin

#endif
