#include "toolkit/input/column_names.h"

#include <fmt/format.h>

#include <map>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"
#include "toolkit/text/utf8.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

std::string numberedName(std::size_t column) { return fmt::format("column_{}", column + 1); }

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
      throw DataError(fmt::format("{}: columns {} and {} are both named {}: rename one of them",
                                  source, earlier->second + 1, column + 1,
                                  quotedExcerpt(names.back())));
    }
  }
  return names;
}

}  // namespace mcbin
