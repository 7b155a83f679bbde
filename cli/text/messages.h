/// What the program tells its user on standard error.
#ifndef MCBIN_CLI_TEXT_MESSAGES_H
#define MCBIN_CLI_TEXT_MESSAGES_H

#include <string_view>

namespace mcbin {

/// Writes what visibleLines() makes of the text.
void tell(std::string_view text);

/// The same, unless the user asked for quiet: what is good to know and changes nothing.
void remark(std::string_view text);

/// From now on nothing is remarked and no progress is shown.
void beQuiet();
bool isQuiet();

}  // namespace mcbin

#endif
