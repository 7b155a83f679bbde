#include "toolkit/model/json_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "toolkit/text/number_text.h"
#include "toolkit/text/utf8.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

void write(const Json& value, std::size_t depth, std::string& text);

/// A text in quotes; what a terminal would act on is written by its number.
void writeText(const Json& value, std::string& text) {
  const std::string quoted = value.dump();
  for (std::string_view rest = quoted; !rest.empty();) {
    const Utf8Character character = firstCharacter(rest);
    if (actsOnTerminal(character.code)) {
      text += fmt::format("\\u{:04x}", static_cast<unsigned>(character.code));
    } else {
      text += rest.substr(0, character.size);
    }
    rest.remove_prefix(character.size);
  }
}

void writeItems(const Json& value, std::size_t depth, std::string& text) {
  const bool isObject = value.is_object();
  const bool onOneLine = !isObject && std::none_of(value.begin(), value.end(),
                                                   [](const Json& v) { return v.is_structured(); });
  const std::string lineStart = onOneLine ? "" : "\n" + std::string(2 * (depth + 1), ' ');
  bool first = true;
  for (const auto& [key, item] : value.items()) {
    if (!first) text += onOneLine ? ", " : ",";
    first = false;
    text += lineStart;
    if (isObject) {
      writeText(Json(key), text);
      text += ": ";
    }
    write(item, depth + 1, text);
  }
  if (!onOneLine) text += "\n" + std::string(2 * depth, ' ');
}

void write(const Json& value, std::size_t depth, std::string& text) {
  if (value.is_structured() && !value.empty()) {
    text += value.is_object() ? '{' : '[';
    writeItems(value, depth, text);
    text += value.is_object() ? '}' : ']';
  } else if (value.is_number_float()) {
    const double number = value.get<double>();
    if (!std::isfinite(number)) {
      throw std::logic_error("JSON has no number " + fmt::to_string(number));
    }
    text += shortestNumber(number);
  } else if (value.is_string()) {
    writeText(value, text);
  } else {
    text += value.dump();
  }
}

}  // namespace

std::string jsonText(const Json& value) {
  std::string text;
  write(value, 0, text);
  return text;
}

Json numberToJson(double value) {
  if (std::isinf(value)) return value > 0.0 ? "inf" : "-inf";
  return value;
}

}  // namespace mcbin
