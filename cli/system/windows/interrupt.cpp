#include "cli/system/interrupt.h"

#include <windows.h>

#include <atomic>
#include <csignal>

#include "toolkit/errors.h"

namespace mcbin {
namespace {

// Written by a thread of the system's.
std::atomic<int> arrivedSignal = 0;

BOOL WINAPI noteEvent(DWORD event) {
  const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  int none = 0;
  arrivedSignal.compare_exchange_strong(none, isKey ? SIGINT : SIGTERM);
  // A closed window or a logoff ends the program as soon as this returns.
  if (!isKey) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void catchInterrupts() { SetConsoleCtrlHandler(noteEvent, TRUE); }

int interruptSignal() { return arrivedSignal; }

void throwIfInterrupted() {
  if (const int signal = arrivedSignal) throw Interrupted(signal);
}

}  // namespace mcbin
