/// Comma- or otherwise separated text.
#ifndef MCBIN_TOOLKIT_INPUT_FORMATS_CSV_READER_H
#define MCBIN_TOOLKIT_INPUT_FORMATS_CSV_READER_H

#include <csv.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/input/byte_source.h"
#include "toolkit/input/table_reader.h"

namespace mcbin {

/// Reads separated text: quoted cells may hold separators, line ends and doubled quotes; lines end
/// with LF, CR or CR LF; empty lines are passed over, but in a table of one column, where such a
/// line behind the header is a row with an empty cell; a UTF-8 byte order mark is skipped. Cells
/// keep their blanks. A quote in the middle of a cell, a row with too few or too many cells, a
/// quoted cell that never ends, a NUL byte, a cell beyond 16 MiB and a row beyond 64 MiB are
/// DataErrors.
class CsvReader : public TableReader {
 public:
  /// With `hasHeader` the first row names the columns, else they are called column_1, column_2 ...
  CsvReader(std::unique_ptr<ByteSource> source, char delimiter, bool hasHeader);

  const std::vector<std::string>& ColumnNames() const override { return columnNames_; }
  bool NextRow(TableRow& row) override;
  void Rewind() override;
  std::string Where(const TableRow& row) const override;
  double ShareRead() const override { return source_->ShareRead(); }

 private:
  struct FreeParser {
    void operator()(csv_parser* parser) const;
  };

  static void OnCell(void* text, std::size_t size, void* reader);
  static void OnRowEnd(int lineEnd, void* reader);

  void Start();
  void StartAgain();
  void SkipByteOrderMark();
  bool FillBuffer();
  std::string_view NextPiece();
  bool ReadRow(TableRow& row);
  void TakePiece(std::string_view piece, TableRow& row);
  bool SplitLine(std::string_view line, std::vector<std::string_view>& cells) const;
  void ParsePiece(std::string_view piece);
  void FinishLastRow();
  void TakeParsedCells(TableRow& row) const;
  void CheckCellCount(const TableRow& row) const;
  [[noreturn]] void FailAt(std::uint64_t line, const std::string& what) const;
  [[noreturn]] void FailParsing();

  std::unique_ptr<ByteSource> source_;
  char delimiter_;
  bool hasHeader_;
  std::vector<std::string> columnNames_;
  std::unique_ptr<csv_parser, FreeParser> parser_;

  std::vector<char> buffer_;
  std::size_t bufferSize_ = 0;
  std::size_t bufferPosition_ = 0;
  bool bufferHasCr_ = false;
  bool atEnd_ = false;

  std::vector<char> cellBytes_;        ///< Cells of the current row that went through the parser.
  std::size_t rowBytes_ = 0;           ///< Of the current row that went through the parser.
  std::vector<std::size_t> cellEnds_;  ///< Where each cell ends in cellBytes_.
  bool rowDone_ = false;
  bool blankIsRow_ = false;
  bool rowOpen_ = false;       ///< A row has begun and not ended.
  bool afterCr_ = false;       ///< The last byte was a CR: its line ends unless an LF comes.
  std::uint64_t line_ = 1;     ///< The line of the next unread byte.
  std::uint64_t rowLine_ = 1;  ///< The line on which the current row starts.
};

}  // namespace mcbin

#endif
