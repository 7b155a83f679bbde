#include "toolkit/text/visible_text.h"

#include <fmt/format.h>

#include <limits>

#include "toolkit/text/utf8.h"

namespace mcbin {
namespace {

std::string escaped(char32_t c) {
  switch (c) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return c < 0x80 ? hexByte(static_cast<char>(c))
                      : fmt::format("\\u{{{:X}}}", static_cast<unsigned>(c));
  }
}

std::string visible(std::string_view text, std::size_t limit, bool keepsLineEnds) {
  std::string result;
  for (; !text.empty() && limit > 0; --limit) {
    const Utf8Character character = firstCharacter(text);
    if (character.size == 0) {
      result += hexByte(text.front());
      text.remove_prefix(1);
      continue;
    }
    const bool isKept = keepsLineEnds && character.code == '\n';
    if (actsOnTerminal(character.code) && !isKept) {
      result += escaped(character.code);
    } else {
      result += text.substr(0, character.size);
    }
    text.remove_prefix(character.size);
  }
  return text.empty() ? result : result + "...";
}

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

}  // namespace

bool actsOnTerminal(char32_t character) {
  const auto isBetween = [character](char32_t first, char32_t last) {
    return character >= first && character <= last;
  };
  return isBetween(0x00, 0x1F) || isBetween(0x7F, 0x9F) || character == 0x061C ||
         isBetween(0x200E, 0x200F) || isBetween(0x2028, 0x202E) || isBetween(0x2066, 0x2069);
}

std::string visibleText(std::string_view text) { return visible(text, kNoLimit, false); }

std::string visibleLines(std::string_view text) { return visible(text, kNoLimit, true); }

std::string excerpt(std::string_view text) { return visible(text, kExcerptLength, false); }

std::string quotedExcerpt(std::string_view text) { return "'" + excerpt(text) + "'"; }

std::string excerptList(const std::vector<std::string>& texts, std::size_t most) {
  std::string list;
  for (std::size_t i = 0; i < texts.size() && i < most; ++i) {
    list += (i == 0 ? "" : ", ") + excerpt(texts[i]);
  }
  return list + (texts.size() > most ? ", ..." : "");
}

}  // namespace mcbin
