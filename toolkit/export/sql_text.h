/// The words of SQL.
#ifndef MCBIN_TOOLKIT_EXPORT_SQL_TEXT_H
#define MCBIN_TOOLKIT_EXPORT_SQL_TEXT_H

#include <string>

#include "toolkit/text/choice.h"

namespace mcbin {

/// What databases write differently: names, texts, numbers and the names of types.
enum class SqlDialect { Sqlite, PostgreSql, DuckDb, Spark, Ansi };
inline constexpr Choice<SqlDialect> kSqlDialects[] = {{"sqlite", SqlDialect::Sqlite},
                                                      {"postgresql", SqlDialect::PostgreSql},
                                                      {"duckdb", SqlDialect::DuckDb},
                                                      {"spark", SqlDialect::Spark},
                                                      {"ansi", SqlDialect::Ansi}};

/// A name in double quotes; in backticks for Spark.
std::string sqlIdentifier(const std::string& name, SqlDialect dialect = SqlDialect::Sqlite);

/// The table that `text` names: parts between dots, as in schema.table, each of which becomes a
/// quoted identifier. A part in double quotes may hold dots, and quotes doubled. UsageError when a
/// part is empty, holds a quote otherwise, or is not closed.
std::string sqlTableName(const std::string& text, SqlDialect dialect = SqlDialect::Sqlite);

/// A text in single quotes.
std::string sqlText(const std::string& text, SqlDialect dialect = SqlDialect::Sqlite);

/// The column `identifier` as a text without the blanks and tabs around it (only blanks in Ansi,
/// which cannot name a tab), and as a number.
std::string sqlTrimmed(const std::string& identifier, SqlDialect dialect);
std::string sqlAsNumber(const std::string& identifier, SqlDialect dialect);

/// A number that is read back as exactly `value`, which must not be NaN, by a database that reads
/// literals to the nearest double, and by SQLite, which does not always: the shortest decimal that
/// SQLite itself reads right, or a product of whole numbers when no decimal is. DataError for an
/// infinite number in Ansi, which has none.
std::string sqlNumber(double value, SqlDialect dialect = SqlDialect::Sqlite);

}  // namespace mcbin

#endif
