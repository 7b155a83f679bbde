#include "cli/system/terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "cli/system/interrupt.h"

namespace mcbin {

namespace {

/// Waits until standard error takes more. False when it never may: a signal has asked the program
/// to end, and half a second is all that a last message is worth.
bool waitForError() {
  constexpr int kMillisecondsPerWait = 100;
  constexpr int kWaitsAfterSignal = 5;
  pollfd waiting = {STDERR_FILENO, POLLOUT, 0};
  int waits = 0;
  while (true) {
    const int ready = ::poll(&waiting, 1, kMillisecondsPerWait);
    if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
    if (interruptSignal() != 0 && ++waits == kWaitsAfterSignal) return false;
  }
}

}  // namespace

void writeError(std::string_view text) {
  constexpr std::size_t kMostAtOnce = 4096;  // what a pipe that takes anything takes at once
  while (!text.empty() && waitForError()) {
    const std::size_t size = std::min(text.size(), kMostAtOnce);
    const ssize_t count = ::write(STDERR_FILENO, text.data(), size);
    if (count < 0 && errno != EINTR && errno != EAGAIN) return;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
}

bool errorIsTerminal() {
  const char* const terminal = std::getenv("TERM");
  return ::isatty(STDERR_FILENO) == 1 &&
         !(terminal != nullptr && std::string_view(terminal) == "dumb");
}

bool errorTakesColour() {
  const char* const noColour = std::getenv("NO_COLOR");
  return errorIsTerminal() && (noColour == nullptr || *noColour == '\0');
}

std::size_t terminalWidth() {
  winsize size = {};
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

}  // namespace mcbin
