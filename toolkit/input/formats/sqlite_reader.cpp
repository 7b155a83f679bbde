#include "toolkit/input/formats/sqlite_reader.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "toolkit/errors.h"
#include "toolkit/input/column_names.h"
#include "toolkit/input/open_table.h"
#include "toolkit/system/paths.h"
#include "toolkit/text/number_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kTablesInMessage = 30;
constexpr int kStepsPerQuestion = 10'000;  // of SQLite's machine: about a millisecond
constexpr int kMillisecondsPerWait = 50;
constexpr int kMostWaits = 100;

/// Whether the database keeps its changes in a log (WAL) of which there is no file. Reading then
/// makes one, and only a connection that could write takes it away again.
bool wouldMakeLog(const std::string& path) {
  constexpr std::size_t kVersionPosition = 18;
  constexpr char kVersionWithLog = 2;
  char header[kVersionPosition + 1] = {};
  std::ifstream(pathOf(path), std::ios::binary).read(header, sizeof header);
  std::error_code error;
  const std::string file = bytesOf(std::filesystem::canonical(pathOf(path), error));
  return header[kVersionPosition] == kVersionWithLog &&
         !std::filesystem::exists(pathOf(file + "-wal"), error);
}

std::string quotedIdentifier(const std::string& name) {
  std::string quoted = "\"";
  for (char c : name) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

}  // namespace

SqliteReader::SqliteReader(const std::string& path, const std::optional<std::string>& table,
                           const std::optional<std::string>& query, Monitor& monitor)
    : monitor_(monitor), name_(visibleText(path)) {
  try {
    Open(path, table, query);
  } catch (...) {
    sqlite3_finalize(statement_);
    sqlite3_close(database_);
    throw;
  }
}

SqliteReader::~SqliteReader() {
  sqlite3_finalize(statement_);
  sqlite3_close(database_);
}

void SqliteReader::Open(const std::string& path, const std::optional<std::string>& table,
                        const std::optional<std::string>& query) {
  const int access = wouldMakeLog(path) ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  if (sqlite3_open_v2(path.c_str(), &database_, access, nullptr) != SQLITE_OK) Fail();
  sqlite3_progress_handler(database_, kStepsPerQuestion, StopsWork, &monitor_);
  sqlite3_busy_handler(database_, WaitsForLock, &monitor_);
  Execute("PRAGMA query_only = 1");
  Execute("BEGIN");
  if (table) CheckTable(*table);
  Prepare(query ? *query : "SELECT * FROM " + quotedIdentifier(*table));
  ReadColumnNames();
}

int SqliteReader::StopsWork(void* monitor) {
  return static_cast<Monitor*>(monitor)->StopRequested() ? 1 : 0;
}

int SqliteReader::WaitsForLock(void* monitor, int waits) {
  if (waits == kMostWaits || StopsWork(monitor) != 0) return 0;
  sqlite3_sleep(kMillisecondsPerWait);
  return 1;
}

void SqliteReader::Execute(const char* sql) {
  if (sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

void SqliteReader::Prepare(const std::string& sql) {
  const char* rest = nullptr;
  if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement_, &rest) != SQLITE_OK) Fail();
  if (statement_ == nullptr) throw DataError(name_ + ": the query is empty");
  if (std::string_view(rest).find_first_not_of(" \t\r\n;") != std::string_view::npos) {
    throw DataError(name_ + ": the query must be one SELECT statement; there is more behind it");
  }
  if (sqlite3_column_count(statement_) == 0 || sqlite3_stmt_readonly(statement_) == 0) {
    throw DataError(name_ + ": the query must be a SELECT statement, which gives rows");
  }
}

void SqliteReader::CheckTable(const std::string& table) {
  const std::vector<std::string> names = TableNames();
  const bool isThere = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
    return sqlite3_stricmp(name.c_str(), table.c_str()) == 0;
  });
  if (!isThere) {
    throw DataError(fmt::format("{}: there is no table {}; the tables are: {}", name_,
                                quotedExcerpt(table), excerptList(names, kTablesInMessage)));
  }
}

std::vector<std::string> SqliteReader::TableNames() {
  std::vector<std::string> names;
  const auto collect = [](void* list, int, char** values, char**) {
    static_cast<std::vector<std::string>*>(list)->emplace_back(values[0]);
    return 0;
  };
  const char* const sql =
      "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE "
      "'sqlite\\_%' ESCAPE '\\' ORDER BY name";
  if (sqlite3_exec(database_, sql, collect, &names, nullptr) != SQLITE_OK) Fail();
  return names;
}

void SqliteReader::ReadColumnNames() {
  std::vector<std::string_view> names;
  const int count = sqlite3_column_count(statement_);
  names.reserve(static_cast<std::size_t>(count));
  for (int column = 0; column < count; ++column) {
    names.emplace_back(sqlite3_column_name(statement_, column));
  }
  columnNames_ = namesFromHeader(names, name_);
  numberTexts_.resize(columnNames_.size());
}

std::string_view SqliteReader::CellText(int column, std::string& numberText, std::uint64_t row) {
  switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_FLOAT:
      // SQLite's own text of a REAL keeps 15 digits, too few to read the value back.
      numberText = shortestNumber(sqlite3_column_double(statement_, column));
      return numberText;
    case SQLITE_BLOB:
      throw DataError(
          fmt::format("{}, row {}: column {} holds a BLOB, which is neither a number "
                      "nor a text: name the columns you want with --query",
                      name_, row, excerpt(columnNames_[static_cast<std::size_t>(column)])));
    default:
      break;
  }
  const auto* const text = sqlite3_column_text(statement_, column);
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

bool SqliteReader::NextRow(TableRow& row) {
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_DONE) return false;
  if (result != SQLITE_ROW) Fail();
  row.line = ++rowNumber_;
  row.cells.clear();
  for (std::size_t column = 0; column < columnNames_.size(); ++column) {
    row.cells.push_back(CellText(static_cast<int>(column), numberTexts_[column], row.line));
  }
  return true;
}

void SqliteReader::Rewind() {
  sqlite3_reset(statement_);
  rowNumber_ = 0;
}

std::string SqliteReader::Where(const TableRow& row) const {
  return fmt::format("{}, row {}", name_, row.line);
}

void SqliteReader::Fail() const {
  monitor_.ThrowIfStopped();
  throw DataError(
      fmt::format("{}: {}", name_,
                  visibleText(database_ == nullptr ? "out of memory" : sqlite3_errmsg(database_))));
}

bool isSqlite(std::string_view start) { return start == std::string_view("SQLite format 3\0", 16); }

std::unique_ptr<TableReader> openSqlite(const InputOptions& options,
                                        std::unique_ptr<ByteSource> source, Monitor& monitor) {
  if (options.noHeader || options.delimiter) {
    throw UsageError(source->Name() +
                     " is an SQLite database: --no-header and --delimiter are for text files");
  }
  if (!options.table && !options.query) {
    throw UsageError(source->Name() +
                     " is an SQLite database: name what to read with --table or --query");
  }
  if (source->IsCompressed() || source->IsCopy()) {
    throw DataError(source->Name() +
                    ": a database can only be read from a plain file: unpack or save it first");
  }
  return std::make_unique<SqliteReader>(options.data, options.table, options.query, monitor);
}

}  // namespace mcbin
