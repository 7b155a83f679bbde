#include "cli/system/terminal.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>

namespace mcbin {

namespace {

constexpr int kStandardError = 2;

HANDLE standardError() { return GetStdHandle(STD_ERROR_HANDLE); }

}  // namespace

void writeError(std::string_view text) {
  constexpr std::size_t kMostAtOnce = 4096;
  while (!text.empty()) {
    const auto size = static_cast<unsigned>(std::min(text.size(), kMostAtOnce));
    const int count = _write(kStandardError, text.data(), size);
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

bool errorIsTerminal() {
  DWORD mode = 0;
  const char* const terminal = std::getenv("TERM");
  return GetConsoleMode(standardError(), &mode) != 0 &&
         SetConsoleMode(standardError(), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0 &&
         !(terminal != nullptr && std::string_view(terminal) == "dumb");
}

bool errorTakesColour() {
  const char* const noColour = std::getenv("NO_COLOR");
  return errorIsTerminal() && (noColour == nullptr || *noColour == '\0');
}

std::size_t terminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO screen = {};
  if (GetConsoleScreenBufferInfo(standardError(), &screen) == 0 || screen.dwSize.X <= 0) return 80;
  return static_cast<std::size_t>(screen.dwSize.X);
}

}  // namespace mcbin
