#include "toolkit/text/utf8.h"

#include <fmt/format.h>

#include <algorithm>

namespace mcbin {
namespace {

struct LeadByte {
  std::size_t size;    ///< Of the whole sequence; 0 for a byte that cannot lead.
  unsigned char low;   ///< The least and greatest second byte: no overlong form, no surrogate,
  unsigned char high;  ///< nothing beyond U+10FFFF.
  unsigned char bits;  ///< Which bits of the byte belong to the character.
};

LeadByte leadByte(unsigned char byte) {
  if (byte < 0x80) return {1, 0, 0, 0x7F};
  if (byte >= 0xC2 && byte <= 0xDF) return {2, 0x80, 0xBF, 0x1F};
  if (byte == 0xE0) return {3, 0xA0, 0xBF, 0x0F};
  if (byte == 0xED) return {3, 0x80, 0x9F, 0x0F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3, 0x80, 0xBF, 0x0F};
  if (byte == 0xF0) return {4, 0x90, 0xBF, 0x07};
  if (byte >= 0xF1 && byte <= 0xF3) return {4, 0x80, 0xBF, 0x07};
  if (byte == 0xF4) return {4, 0x80, 0x8F, 0x07};
  return {0, 0, 0, 0};
}

}  // namespace

Utf8Character firstCharacter(std::string_view bytes) {
  const auto first = static_cast<unsigned char>(bytes.front());
  const LeadByte lead = leadByte(first);
  if (lead.size == 0 || lead.size > bytes.size()) return {};
  char32_t code = first & lead.bits;
  for (std::size_t k = 1; k < lead.size; ++k) {
    const auto byte = static_cast<unsigned char>(bytes[k]);
    const unsigned char low = k == 1 ? lead.low : 0x80;
    const unsigned char high = k == 1 ? lead.high : 0xBF;
    if (byte < low || byte > high) return {};
    code = (code << 6U) | (byte & 0x3FU);
  }
  return {code, lead.size};
}

std::string hexByte(char byte) {
  return fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
}

std::string asUtf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t size = firstCharacter(bytes).size;
    if (size == 0) text += hexByte(bytes.front());
    text += bytes.substr(0, size);
    bytes.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return text;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t size = firstCharacter(bytes).size;
    if (size == 0) return false;
    bytes.remove_prefix(size);
  }
  return true;
}

}  // namespace mcbin
