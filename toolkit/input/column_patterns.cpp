#include "toolkit/input/column_patterns.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kNamesInMessage = 30;

std::optional<std::size_t> exactColumn(const std::vector<std::string>& names,
                                       const std::string& text) {
  const auto name = std::find(names.begin(), names.end(), text);
  if (name != names.end()) return static_cast<std::size_t>(name - names.begin());
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  if (isNumber && number >= 1 && number <= names.size()) return number - 1;
  return std::nullopt;
}

/// The pattern in SQLite's words, where "^", not "!", turns a set into all but it. SQLite sees
/// characters of UTF-8 whatever the language of the user is, unlike the C library's matching.
std::string sqlitePattern(std::string pattern) {
  for (std::size_t set = pattern.find('['); set != std::string::npos && set + 2 < pattern.size();) {
    if (pattern[set + 1] == '!') pattern[set + 1] = '^';
    const std::size_t first = set + (pattern[set + 1] == '^' ? 2 : 1);
    set = pattern.find('[', pattern.find(']', first + 1));
  }
  return pattern;
}

[[noreturn]] void failNoColumn(const std::vector<std::string>& names, const std::string& text,
                               std::string_view option) {
  std::string message = fmt::format("{}: no column {}; the columns are: {}", option,
                                    quotedExcerpt(text), excerptList(names, kNamesInMessage));
  if (names.size() == 1) message += " (only one: is the separator right? see --delimiter)";
  throw DataError(message);
}

}  // namespace

std::size_t findColumn(const std::vector<std::string>& names, const std::string& text,
                       std::string_view option) {
  const std::optional<std::size_t> column = exactColumn(names, text);
  if (!column) failNoColumn(names, text, option);
  return *column;
}

std::vector<std::size_t> matchColumns(const std::vector<std::string>& names,
                                      const std::string& pattern, std::string_view option) {
  if (const auto column = exactColumn(names, pattern)) return {*column};
  std::vector<std::size_t> columns;
  if (isPattern(pattern)) {
    const std::string glob = sqlitePattern(pattern);
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (sqlite3_strglob(glob.c_str(), names[i].c_str()) == 0) columns.push_back(i);
    }
  }
  if (columns.empty()) failNoColumn(names, pattern, option);
  return columns;
}

bool isPattern(std::string_view text) {
  return text.find_first_of("*?[") != std::string_view::npos;
}

}  // namespace mcbin
