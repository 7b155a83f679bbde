#include "cli/system/interrupt.h"

#include <csignal>

#include "toolkit/errors.h"

namespace mcbin {
namespace {

// A signal handler has nowhere else to leave its note.
volatile std::sig_atomic_t arrivedSignal = 0;

extern "C" void noteSignal(int number) {
  if (arrivedSignal == 0) arrivedSignal = number;
}

constexpr int kEndingSignals[] = {SIGHUP,  SIGINT,  SIGQUIT, SIGPIPE, SIGALRM,
                                  SIGTERM, SIGUSR1, SIGUSR2, SIGXCPU, SIGXFSZ};

}  // namespace

void catchInterrupts() {
  struct sigaction action = {};
  action.sa_handler = noteSignal;
  sigemptyset(&action.sa_mask);
  // No SA_RESTART: a read that waits for a slow pipe must come back.
  for (const int signal : kEndingSignals) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

int interruptSignal() { return arrivedSignal; }

void throwIfInterrupted() {
  if (arrivedSignal != 0) throw Interrupted(arrivedSignal);
}

}  // namespace mcbin
