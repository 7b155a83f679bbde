#include "toolkit/text/markdown_text.h"

namespace mcbin {

std::string markdownText(std::string_view text) {
  constexpr std::string_view kSpecial = "\\`*_[]<>|#&~";
  std::string escaped;
  for (const char c : text) {
    if (kSpecial.find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

}  // namespace mcbin
