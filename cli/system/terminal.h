/// What standard error is connected to.
#ifndef MCBIN_CLI_SYSTEM_TERMINAL_H
#define MCBIN_CLI_SYSTEM_TERMINAL_H

#include <cstddef>

namespace mcbin {

/// Whether standard error is a terminal that a line can be redrawn on (TERM is not "dumb").
bool errorIsTerminal();

/// Whether messages may be coloured: a terminal, and NO_COLOR is not set to anything.
bool errorTakesColour();

/// Characters in a line of the terminal, 80 when it does not tell.
std::size_t terminalWidth();

}  // namespace mcbin

#endif
