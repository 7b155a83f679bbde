#include "cli/system/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "toolkit/text/visible_text.h"

namespace mcbin {

void tell(std::string_view text) { std::fputs(visibleLines(text).c_str(), stderr); }

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
