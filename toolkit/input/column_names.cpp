#include "toolkit/input/column_names.h"

#include <fmt/format.h>

#include <map>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"

namespace mcbin {
namespace {

std::string numberedName(std::size_t column) { return fmt::format("column_{}", column + 1); }

struct LeadByte {
  std::size_t length;  ///< Of the whole sequence; 0 for a byte that cannot lead.
  unsigned char low;   ///< The least and greatest second byte: no overlong form, no surrogate,
  unsigned char high;  ///< nothing beyond U+10FFFF.
};

LeadByte leadByte(unsigned char byte) {
  if (byte < 0x80) return {1, 0, 0};
  if (byte >= 0xC2 && byte <= 0xDF) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {4, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

}  // namespace

std::vector<std::string> numberedNames(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t column = 0; column < count; ++column) names.push_back(numberedName(column));
  return names;
}

std::vector<std::string> namesFromHeader(const std::vector<std::string_view>& header,
                                         const std::string& source) {
  std::vector<std::string> names;
  std::map<std::string, std::size_t> numbers;
  for (std::string_view cell : header) {
    const std::size_t column = names.size();
    if (!isUtf8(cell)) {
      throw DataError(
          fmt::format("{}: the name of column {} is not UTF-8 text: convert the file "
                      "(iconv -f LATIN1 -t UTF-8)",
                      source, column + 1));
    }
    const std::string_view name = trimmed(cell);
    names.push_back(name.empty() ? numberedName(column) : std::string(name));
    const auto [earlier, isNew] = numbers.emplace(names.back(), column);
    if (!isNew) {
      throw DataError(fmt::format("{}: columns {} and {} are both named '{}': rename one of them",
                                  source, earlier->second + 1, column + 1, names.back()));
    }
  }
  return names;
}

bool isUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const LeadByte lead = leadByte(static_cast<unsigned char>(bytes[i]));
    if (lead.length == 0 || i + lead.length > bytes.size()) return false;
    for (std::size_t k = 1; k < lead.length; ++k) {
      const auto byte = static_cast<unsigned char>(bytes[i + k]);
      const unsigned char low = k == 1 ? lead.low : 0x80;
      const unsigned char high = k == 1 ? lead.high : 0xBF;
      if (byte < low || byte > high) return false;
    }
    i += lead.length;
  }
  return true;
}

}  // namespace mcbin
