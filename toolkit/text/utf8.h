/// Characters of UTF-8 text.
#ifndef MCBIN_TOOLKIT_TEXT_UTF8_H
#define MCBIN_TOOLKIT_TEXT_UTF8_H

#include <cstddef>
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

}  // namespace mcbin

#endif
