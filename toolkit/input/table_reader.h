/// A source of rows of text cells.
#ifndef MCBIN_TOOLKIT_INPUT_TABLE_READER_H
#define MCBIN_TOOLKIT_INPUT_TABLE_READER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// One row. The cells live until the next row is read. An empty cell is missing, as is a database
/// NULL, which comes as an empty cell.
struct TableRow {
  std::uint64_t line = 0;  ///< Line of a text file (from 1) on which the row starts, or row number.
  std::vector<std::string_view> cells;  ///< As many as there are columns.
};

/// Reads a table front to back, as often as wanted. Every failure is a DataError that names the
/// place.
class TableReader {
 public:
  TableReader() = default;
  TableReader(const TableReader&) = delete;
  TableReader& operator=(const TableReader&) = delete;
  virtual ~TableReader() = default;

  /// Distinct, none empty: a column without a name is called column_N, N counting from 1.
  virtual const std::vector<std::string>& ColumnNames() const = 0;

  /// Fills `row` with the next row; false at the end.
  virtual bool NextRow(TableRow& row) = 0;

  /// Goes back in front of the first row.
  virtual void Rewind() = 0;

  /// "data.csv:17" or "row 17 of loans.db": where to look for `row`.
  virtual std::string Where(const TableRow& row) const = 0;

  /// Share of the input read so far, 0 to 1; negative when it is not known.
  virtual double ShareRead() const = 0;
};

}  // namespace mcbin

#endif
