/// Ctrl-C.
#ifndef MCBIN_CLI_SYSTEM_INTERRUPT_H
#define MCBIN_CLI_SYSTEM_INTERRUPT_H

namespace mcbin {

/// From now on SIGINT and SIGTERM are only noted, so that the program can stop in good order.
void catchInterrupts();

/// The signal that arrived, 0 when none did.
int interruptSignal();

/// Throws Interrupted when a signal has arrived. Loops over cases call it.
void throwIfInterrupted();

}  // namespace mcbin

#endif
