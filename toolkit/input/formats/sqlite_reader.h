/// A table or a query of an SQLite database.
#ifndef MCBIN_TOOLKIT_INPUT_FORMATS_SQLITE_READER_H
#define MCBIN_TOOLKIT_INPUT_FORMATS_SQLITE_READER_H

#include <optional>
#include <string>
#include <vector>

#include "toolkit/input/table_reader.h"
#include "toolkit/monitor.h"

struct sqlite3;
struct sqlite3_stmt;

namespace mcbin {

/// Reads the rows that a query gives, from one unchanging view of the database: both passes see
/// the same rows even while another program writes. No file is left beside the database that was
/// not there before. NULL is an empty cell, a REAL its shortest
/// text that reads back the same; a BLOB is a DataError.
class SqliteReader : public TableReader {
 public:
  /// Exactly one of `table` and `query` is given. A table is read in the order of its rows. The
  /// monitor, which must live as long, is asked while SQLite works or waits for a lock.
  SqliteReader(const std::string& path, const std::optional<std::string>& table,
               const std::optional<std::string>& query, Monitor& monitor);
  ~SqliteReader() override;

  const std::vector<std::string>& ColumnNames() const override { return columnNames_; }
  bool NextRow(TableRow& row) override;
  void Rewind() override;
  std::string Where(const TableRow& row) const override;
  double ShareRead() const override { return -1.0; }

 private:
  void Open(const std::string& path, const std::optional<std::string>& table,
            const std::optional<std::string>& query);
  void Prepare(const std::string& sql);
  void Execute(const char* sql);
  void CheckTable(const std::string& table);
  std::vector<std::string> TableNames();
  void ReadColumnNames();
  std::string_view CellText(int column, std::string& numberText, std::uint64_t row);
  [[noreturn]] void Fail() const;

  static int StopsWork(void* monitor);
  static int WaitsForLock(void* monitor, int waits);

  Monitor& monitor_;
  std::string name_;  ///< The path as messages show it.
  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
  std::vector<std::string> columnNames_;
  std::vector<std::string> numberTexts_;  ///< One a column: the text of a REAL lives here.
  std::uint64_t rowNumber_ = 0;
};

}  // namespace mcbin

#endif
