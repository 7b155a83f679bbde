/// Signals that ask the program to end: Ctrl-C, a closed terminal or pipe, a used-up limit.
#ifndef MCBIN_CLI_SYSTEM_INTERRUPT_H
#define MCBIN_CLI_SYSTEM_INTERRUPT_H

namespace mcbin {

/// From now on every signal that ordinarily ends a program is only noted, so that it can stop in
/// good order. Those that are ignored when the program starts (nohup, a shell's background) stay
/// so.
void catchInterrupts();

/// The signal that arrived first, 0 when none did.
int interruptSignal();

/// Throws Interrupted when a signal has arrived. Loops over cases call it.
void throwIfInterrupted();

}  // namespace mcbin

#endif
