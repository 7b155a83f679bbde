#include "cli/text/messages.h"

#include "cli/system/terminal.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

bool quiet = false;  // one program, one user

}  // namespace

void tell(std::string_view text) { writeError(visibleLines(text)); }

void remark(std::string_view text) {
  if (!quiet) tell(text);
}

void beQuiet() { quiet = true; }

bool isQuiet() { return quiet; }

}  // namespace mcbin
