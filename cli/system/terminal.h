/// Standard error and what it is connected to.
#ifndef MCBIN_CLI_SYSTEM_TERMINAL_H
#define MCBIN_CLI_SYSTEM_TERMINAL_H

#include <cstddef>
#include <string_view>

namespace mcbin {

/// Writes to standard error. That it cannot be written changes nothing: there is no other place to
/// say so. A reader who reads no more is not waited for once a signal has arrived.
void writeError(std::string_view text);

/// Whether standard error is a terminal that a line can be redrawn on (TERM is not "dumb").
bool errorIsTerminal();

/// Whether messages may be coloured: a terminal, and NO_COLOR is not set to anything.
bool errorTakesColour();

/// Characters in a line of the terminal, 80 when it does not tell.
std::size_t terminalWidth();

}  // namespace mcbin

#endif
