#include "toolkit/system/waiting.h"

#include <poll.h>

#include <cerrno>

namespace mcbin {
namespace {

constexpr int kMillisecondsPerWait = 200;

void waitFor(int descriptor, short events, Monitor& monitor) {
  while (true) {
    monitor.ThrowIfStopped();
    pollfd waiting = {descriptor, events, 0};
    const int ready = ::poll(&waiting, 1, kMillisecondsPerWait);
    if (ready > 0 || (ready < 0 && errno != EINTR && errno != EAGAIN)) return;
  }
}

}  // namespace

void waitToRead(int descriptor, Monitor& monitor) { waitFor(descriptor, POLLIN, monitor); }

void waitToWrite(int descriptor, Monitor& monitor) { waitFor(descriptor, POLLOUT, monitor); }

void pauseAndAsk(Monitor& monitor) {
  ::poll(nullptr, 0, kMillisecondsPerWait);
  monitor.ThrowIfStopped();
}

}  // namespace mcbin
