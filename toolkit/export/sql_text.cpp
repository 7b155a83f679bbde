#include "toolkit/export/sql_text.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

std::string quoted(const std::string& text, char quote) {
  std::string result(1, quote);
  for (const char c : text) {
    if (c == quote) result += quote;
    result += c;
  }
  return result + quote;
}

double readBySqlite(const std::string& literal) {
  sqlite3* connection = nullptr;
  const int opened = sqlite3_open_v2(":memory:", &connection, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(connection, sqlite3_close);
  sqlite3_stmt* prepared = nullptr;
  const std::string query = "SELECT " + literal;
  if (opened != SQLITE_OK ||
      sqlite3_prepare_v2(connection, query.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    throw std::runtime_error("SQLite cannot be used to check a number");
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
  if (sqlite3_step(prepared) != SQLITE_ROW) {
    throw std::runtime_error("SQLite cannot be used to check a number");
  }
  return sqlite3_column_double(prepared, 0);
}

/// mantissa * 2^exponent with factors that are whole numbers below 2^53: no rounding on the way.
std::string exactProduct(double value) {
  constexpr int kMantissaBits = 53;
  constexpr int kStep = 50;
  int exponent = 0;
  const double mantissa = std::ldexp(std::frexp(value, &exponent), kMantissaBits);
  std::string product = fmt::format("({:.1f}", mantissa);
  int left = exponent - kMantissaBits;
  while (left != 0) {
    const int step = std::min(std::abs(left), kStep);
    product += fmt::format(" {} {:.1f}", left > 0 ? '*' : '/', std::ldexp(1.0, step));
    left += left > 0 ? -step : step;
  }
  return product + ")";
}

std::string sqliteNumber(double value) {
  constexpr int kLongestDecimal = 19;  // more digits are not read
  if (std::isinf(value)) return value > 0.0 ? "9e999" : "-9e999";
  std::string literal = fmt::format("{}", value);
  if (literal.find_first_of(".e") == std::string::npos) literal += ".0";
  if (readBySqlite(literal) == value) return literal;
  literal = fmt::format("{:.{}e}", value, kLongestDecimal - 1);
  return readBySqlite(literal) == value ? literal : exactProduct(value);
}

/// Both take a part of a table's name off the front of `rest`; a part in quotes that are not closed
/// is empty.
std::string takePlainPart(std::string_view& rest) {
  std::string part(rest.substr(0, rest.find_first_of(".\"")));
  rest.remove_prefix(part.size());
  return part;
}

std::string takeQuotedPart(std::string_view& rest) {
  std::string part;
  rest.remove_prefix(1);
  while (true) {
    const std::size_t quote = rest.find('"');
    if (quote == std::string_view::npos) return "";
    part += rest.substr(0, quote);
    rest.remove_prefix(quote + 1);
    if (rest.empty() || rest.front() != '"') return part;
    part += '"';
    rest.remove_prefix(1);
  }
}

}  // namespace

std::string sqlIdentifier(const std::string& name, SqlDialect dialect) {
  return quoted(name, dialect == SqlDialect::Spark ? '`' : '"');
}

std::string sqlTableName(const std::string& text, SqlDialect dialect) {
  std::string name;
  std::string_view rest = text;
  while (true) {
    const bool isQuoted = !rest.empty() && rest.front() == '"';
    const std::string part = isQuoted ? takeQuotedPart(rest) : takePlainPart(rest);
    if (part.empty() || !(rest.empty() || rest.front() == '.')) {
      throw UsageError(fmt::format(
          "--from {}: write TABLE or SCHEMA.TABLE, a name with a dot or a quote in double quotes",
          excerpt(text)));
    }
    name += sqlIdentifier(part, dialect);
    if (rest.empty()) return name;
    name += '.';
    rest.remove_prefix(1);
  }
}

std::string sqlText(const std::string& text, SqlDialect dialect) {
  if (dialect != SqlDialect::Spark) return quoted(text, '\'');
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') result += '\\';
    result += c;
  }
  return result + "'";
}

std::string sqlTrimmed(const std::string& identifier, SqlDialect dialect) {
  switch (dialect) {
    case SqlDialect::Ansi:
      return fmt::format("TRIM(CAST({} AS VARCHAR(255)))", identifier);
    case SqlDialect::Spark:
      return fmt::format("TRIM(BOTH ' \\t' FROM CAST({} AS STRING))", identifier);
    default:
      return fmt::format("TRIM(CAST({} AS VARCHAR), ' ' || {}(9))", identifier,
                         dialect == SqlDialect::Sqlite ? "CHAR" : "CHR");
  }
}

std::string sqlAsNumber(const std::string& identifier, SqlDialect dialect) {
  const bool isShort = dialect == SqlDialect::DuckDb || dialect == SqlDialect::Spark;
  return fmt::format("CAST({} AS {})", identifier, isShort ? "DOUBLE" : "DOUBLE PRECISION");
}

std::string sqlNumber(double value, SqlDialect dialect) {
  if (dialect == SqlDialect::Sqlite) return sqliteNumber(value);
  if (std::isinf(value)) {
    if (dialect == SqlDialect::Ansi) {
      throw DataError("standard SQL has no infinite numbers: name another --dialect");
    }
    return sqlAsNumber(value > 0.0 ? "'Infinity'" : "'-Infinity'", dialect);
  }
  // The exponent tells a double from a decimal number.
  const std::string literal = fmt::format("{}", value);
  return literal.find('e') == std::string::npos ? literal + "e0" : literal;
}

}  // namespace mcbin
