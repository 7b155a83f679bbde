/// Characters of UTF-8 text.
#ifndef MCBIN_TOOLKIT_TEXT_UTF8_H
#define MCBIN_TOOLKIT_TEXT_UTF8_H

#include <cstddef>
#include <string>
#include <string_view>

namespace mcbin {

/// A character and the bytes that it takes.
struct Utf8Character {
  char32_t code = 0;
  std::size_t size = 0;  ///< 0 when the bytes start with no character.
};

/// The character that `bytes`, which must not be empty, start with. Overlong forms, surrogates and
/// what lies beyond U+10FFFF are none.
Utf8Character firstCharacter(std::string_view bytes);

bool isUtf8(std::string_view bytes);

/// "\xE9", which stands for a byte.
std::string hexByte(char byte);

/// The text with \xE9 for each byte that is no UTF-8. So a model stores texts from outside, and so
/// a cell is compared with them.
std::string asUtf8(std::string_view bytes);

}  // namespace mcbin

#endif
