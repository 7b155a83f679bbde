/// The words of SQL.
#ifndef MCBIN_TOOLKIT_EXPORT_SQL_TEXT_H
#define MCBIN_TOOLKIT_EXPORT_SQL_TEXT_H

#include <string>

namespace mcbin {

/// A name in double quotes.
std::string sqlIdentifier(const std::string& name);

/// The table that `text` names: parts between dots, as in schema.table, each of which becomes a
/// quoted identifier. A part in double quotes may hold dots, and quotes doubled. UsageError when a
/// part is empty, holds a quote otherwise, or is not closed.
std::string sqlTableName(const std::string& text);

/// A text in single quotes.
std::string sqlText(const std::string& text);

/// A number that is read back as exactly `value`, which must not be NaN, by a database that reads
/// literals to the nearest double, and by SQLite, which does not always: the shortest decimal that
/// SQLite itself reads right, or a product of whole numbers when no decimal is.
std::string sqlNumber(double value);

}  // namespace mcbin

#endif
