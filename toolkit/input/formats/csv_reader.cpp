#include "toolkit/input/formats/csv_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "toolkit/errors.h"
#include "toolkit/input/column_names.h"
#include "toolkit/input/open_table.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 17U;
constexpr std::size_t kMebibyte = std::size_t{1} << 20U;
constexpr std::size_t kLongestRow = 64 * kMebibyte;
constexpr std::size_t kLongestCell = 16 * kMebibyte;
// A cell's memory grows by that much: where growing copies, small steps take quadratic time.
constexpr std::size_t kCellStep = std::size_t{1} << 18U;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

int noBlanks(unsigned char) { return 0; }

bool endsWith(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

char delimiterOf(const InputOptions& options) {
  if (options.delimiter) {
    if (*options.delimiter == "tab" || *options.delimiter == "\\t") return '\t';
    if (options.delimiter->size() == 1 &&
        std::string_view("\"\r\n").find((*options.delimiter)[0]) == std::string_view::npos) {
      return (*options.delimiter)[0];
    }
    throw UsageError(fmt::format("--delimiter takes one character or the word tab, not {}",
                                 quotedExcerpt(*options.delimiter)));
  }
  std::string_view name = options.data;
  if (endsWith(name, ".gz")) name.remove_suffix(3);
  return endsWith(name, ".tsv") || endsWith(name, ".tab") ? '\t' : ',';
}

}  // namespace

void CsvReader::FreeParser::operator()(csv_parser* parser) const {
  csv_free(parser);
  delete parser;
}

CsvReader::CsvReader(std::unique_ptr<ByteSource> source, char delimiter, bool hasHeader)
    : source_(std::move(source)),
      delimiter_(delimiter),
      hasHeader_(hasHeader),
      buffer_(kBufferSize) {
  Start();
  TableRow first;
  if (!ReadRow(first)) {
    throw DataError(source_->Name() + ": the file is empty: it has no header and no case");
  }
  columnNames_ =
      hasHeader ? namesFromHeader(first.cells, source_->Name()) : numberedNames(first.cells.size());
  if (!hasHeader) StartAgain();
  blankIsRow_ = columnNames_.size() == 1;
}

void CsvReader::Start() {
  parser_.reset(new csv_parser());
  if (csv_init(parser_.get(), CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
  csv_set_delim(parser_.get(), static_cast<unsigned char>(delimiter_));
  csv_set_space_func(parser_.get(), noBlanks);
  csv_set_blk_size(parser_.get(), kCellStep);
  bufferSize_ = bufferPosition_ = 0;
  atEnd_ = rowOpen_ = afterCr_ = false;
  line_ = rowLine_ = 1;
  SkipByteOrderMark();
}

void CsvReader::SkipByteOrderMark() {
  FillBuffer();
  const std::string_view start(buffer_.data(), std::min(bufferSize_, kByteOrderMark.size()));
  if (start == kByteOrderMark) bufferPosition_ = kByteOrderMark.size();
}

void CsvReader::Rewind() { StartAgain(); }

void CsvReader::StartAgain() {
  source_->Rewind();
  Start();
  TableRow header;
  blankIsRow_ = false;
  if (hasHeader_) ReadRow(header);
  blankIsRow_ = columnNames_.size() == 1;
}

bool CsvReader::FillBuffer() {
  bufferPosition_ = 0;
  bufferSize_ = source_->Read(buffer_.data(), buffer_.size());
  bufferHasCr_ = std::memchr(buffer_.data(), '\r', bufferSize_) != nullptr;
  const void* const nul = std::memchr(buffer_.data(), '\0', bufferSize_);
  if (nul != nullptr) {
    const auto offset = static_cast<const char*>(nul) - buffer_.data();
    const auto lines = std::count(buffer_.data(), buffer_.data() + offset, '\n');
    FailAt(
        line_ + static_cast<std::uint64_t>(lines),
        "a NUL byte: this is not UTF-8 text (convert UTF-16 text or a spreadsheet to CSV first)");
  }
  return bufferSize_ > 0;
}

/// The next bytes up to and with a line end, or up to the end of the buffer. So at most one row
/// ends in a piece, and the parser, which knows no lines, can be told where it is.
std::string_view CsvReader::NextPiece() {
  const char* const start = buffer_.data() + bufferPosition_;
  const std::size_t left = bufferSize_ - bufferPosition_;
  std::size_t size = left;
  if (const void* const lf = std::memchr(start, '\n', left)) {
    size = static_cast<std::size_t>(static_cast<const char*>(lf) - start) + 1;
  }
  const void* const cr = bufferHasCr_ ? std::memchr(start, '\r', size) : nullptr;
  if (cr != nullptr) {
    const auto position = static_cast<std::size_t>(static_cast<const char*>(cr) - start);
    // A CR that ends the buffer may belong to a CR LF: the LF then is a piece of its own.
    if (position + 2 != size || start[position + 1] != '\n') size = position + 1;
  }
  bufferPosition_ += size;
  return {start, size};
}

void CsvReader::OnCell(void* text, std::size_t size, void* reader) {
  auto& self = *static_cast<CsvReader*>(reader);
  const std::size_t start = self.cellEnds_.empty() ? 0 : self.cellEnds_.back();
  if (start + size > self.cellBytes_.size()) self.cellBytes_.resize(2 * (start + size));
  if (size > 0) std::memcpy(self.cellBytes_.data() + start, text, size);
  self.cellEnds_.push_back(start + size);
}

void CsvReader::OnRowEnd(int, void* reader) { static_cast<CsvReader*>(reader)->rowDone_ = true; }

void CsvReader::TakePiece(std::string_view piece, TableRow& row) {
  const bool endsCrLf = afterCr_ && piece == "\n";
  if (afterCr_ && !endsCrLf) ++line_;
  afterCr_ = piece.back() == '\r';
  if (!rowOpen_) {
    rowLine_ = line_;
    rowBytes_ = 0;
  }
  const bool isBlank = piece == "\n" || piece == "\r\n" || piece == "\r";
  if (isBlank && blankIsRow_ && !rowOpen_ && !endsCrLf) {
    row.cells.emplace_back();
    rowDone_ = true;
  } else {
    rowDone_ = !rowOpen_ && !isBlank && SplitLine(piece, row.cells);
  }
  if (!rowDone_) {
    row.cells.clear();
    ParsePiece(piece);
  }
  rowOpen_ = !rowDone_ && (rowOpen_ || !isBlank);
  if (piece.back() == '\n') ++line_;
}

/// The short way for a row on one line that has quotes around whole cells only: its cells stay
/// where they are. False when the parser has to look.
bool CsvReader::SplitLine(std::string_view line, std::vector<std::string_view>& cells) const {
  if (line.back() != '\n') return false;
  line.remove_suffix(line.size() > 1 && line[line.size() - 2] == '\r' ? 2 : 1);
  std::size_t nextQuote = line.find('"');
  std::size_t start = 0;
  while (true) {
    std::size_t end = 0;
    if (start == nextQuote) {
      end = line.find('"', ++start);
      if (end == std::string_view::npos) return false;
      cells.push_back(line.substr(start, end - start));
      nextQuote = line.find('"', ++end);
      if (end < line.size() && line[end] != delimiter_) return false;
    } else {
      end = std::min(line.find(delimiter_, start), line.size());
      if (nextQuote < end) return false;
      cells.push_back(line.substr(start, end - start));
    }
    if (end == line.size()) return true;
    start = end + 1;
  }
}

void CsvReader::ParsePiece(std::string_view piece) {
  const std::size_t parsed =
      csv_parse(parser_.get(), piece.data(), piece.size(), OnCell, OnRowEnd, this);
  if (parsed != piece.size()) FailParsing();
  rowBytes_ += piece.size();
  if (parser_->entry_pos > kLongestCell) {
    FailAt(rowLine_,
           fmt::format("the cell in column {} is longer than {} MiB: is a closing \" missing?",
                       cellEnds_.size() + 1, kLongestCell / kMebibyte));
  }
  if (rowBytes_ > kLongestRow) {
    FailAt(rowLine_, fmt::format("the row is longer than {} MiB: do its lines end?",
                                 kLongestRow / kMebibyte));
  }
}

void CsvReader::FinishLastRow() {
  atEnd_ = true;
  if (csv_fini(parser_.get(), OnCell, OnRowEnd, this) != 0) {
    FailAt(rowLine_,
           "a quoted cell of the row that starts here never ends: a closing \" is missing");
  }
}

bool CsvReader::ReadRow(TableRow& row) {
  row.cells.clear();
  cellEnds_.clear();
  rowDone_ = false;
  while (!rowDone_ && !atEnd_) {
    if (bufferPosition_ == bufferSize_ && !FillBuffer()) {
      FinishLastRow();
    } else {
      TakePiece(NextPiece(), row);
    }
  }
  row.line = rowLine_;
  TakeParsedCells(row);
  return rowDone_;
}

void CsvReader::TakeParsedCells(TableRow& row) const {
  std::size_t start = 0;
  for (std::size_t end : cellEnds_) {
    row.cells.emplace_back(cellBytes_.data() + start, end - start);
    start = end;
  }
}

void CsvReader::CheckCellCount(const TableRow& row) const {
  const std::size_t expected = columnNames_.size();
  const std::size_t count = row.cells.size();
  if (count < expected) {
    FailAt(rowLine_, fmt::format("the row has {} of {} cells: there is none for column {} ({})",
                                 count, expected, count + 1, excerpt(columnNames_[count])));
  }
  if (count > expected) {
    FailAt(rowLine_, fmt::format("the row has {} cells where there are {} columns: cell {} is one "
                                 "too many (a cell that holds the separator must be quoted)",
                                 count, expected, expected + 1));
  }
}

bool CsvReader::NextRow(TableRow& row) {
  if (!ReadRow(row)) return false;
  CheckCellCount(row);
  return true;
}

std::string CsvReader::Where(const TableRow& row) const {
  return fmt::format("{}, line {}", source_->Name(), row.line);
}

void CsvReader::FailAt(std::uint64_t line, const std::string& what) const {
  throw DataError(fmt::format("{}, line {}: {}", source_->Name(), line, what));
}

void CsvReader::FailParsing() {
  if (csv_error(parser_.get()) == CSV_ENOMEM) throw std::bad_alloc();
  FailAt(line_, fmt::format("column {}: a \" in the middle of a cell: quote the whole cell and "
                            "double the quotes inside it",
                            cellEnds_.size() + 1));
}

std::unique_ptr<TableReader> openCsv(const InputOptions& options,
                                     std::unique_ptr<ByteSource> source, Monitor& /*monitor*/) {
  const char delimiter = delimiterOf(options);
  if (options.table || options.query) {
    throw UsageError(source->Name() +
                     " is no SQLite database: --table and --query do not apply to it");
  }
  return std::make_unique<CsvReader>(std::move(source), delimiter, !options.noHeader);
}

}  // namespace mcbin
