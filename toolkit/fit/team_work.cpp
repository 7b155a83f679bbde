#include "toolkit/fit/team_work.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace mcbin {
namespace {

constexpr std::chrono::milliseconds kWatchInterval(50);

class Team {
 public:
  Team(std::size_t members, std::atomic<bool>& isAbandoned)
      : isAbandoned_(isAbandoned), open_(members) {}

  void Work(const std::function<void(std::size_t)>& work, std::size_t member) {
    std::exception_ptr failure;
    try {
      work(member);
    } catch (...) {
      failure = std::current_exception();
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    if (failure && !failure_) failure_ = failure;
    if (failure) isAbandoned_ = true;
    --open_;
    memberEnded_.notify_one();
  }

  /// Until every member has ended.
  void Watch(const std::function<void()>& watch) {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!memberEnded_.wait_for(lock, kWatchInterval, [this] { return open_ == 0; })) {
      lock.unlock();
      watch();
      lock.lock();
    }
  }

  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  std::atomic<bool>& isAbandoned_;
  std::mutex mutex_;  ///< Of the fields below.
  std::condition_variable memberEnded_;
  std::size_t open_;
  std::exception_ptr failure_;  ///< The first one.
};

}  // namespace

void workTogether(std::size_t members, const std::function<void(std::size_t)>& work,
                  const std::function<void()>& watch, std::atomic<bool>& isAbandoned) {
  Team team(members, isAbandoned);
  std::vector<std::jthread> threads;
  try {
    for (std::size_t m = 0; m < members; ++m) {
      threads.emplace_back([&team, &work, m] { team.Work(work, m); });
    }
    team.Watch(watch);
  } catch (...) {
    isAbandoned = true;
    throw;
  }
  threads.clear();
  team.RethrowFailure();
}

}  // namespace mcbin
