#include "toolkit/fit/column_scan.h"

#include <fmt/format.h>

#include <algorithm>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"
#include "toolkit/input/column_names.h"

namespace mcbin {
namespace {

constexpr std::uint64_t kReportInterval = 4096;

class Scanner {
 public:
  Scanner(TableReader& reader, const ScanRequest& request)
      : reader_(reader), request_(request), cells_(request.naTexts) {
    scan_.columns.resize(request.columns.size());
  }

  void Row(const TableRow& row) {
    ++scan_.rows;
    for (std::size_t c = 0; c < request_.columns.size(); ++c) {
      if (request_.columns[c] == ScanAs::Cells) Cell(row, c);
      if (request_.columns[c] == ScanAs::Target) TargetCell(row, c);
    }
  }

  TableScan Finish() {
    scan_.categories = classes_.Names();
    scan_.codes = classes_.Codes();
    return std::move(scan_);
  }
  std::uint64_t Rows() const { return scan_.rows; }

 private:
  void Cell(const TableRow& row, std::size_t column) {
    ColumnScan& scan = scan_.columns[column];
    // A column of numbers and texts is refused whatever follows.
    if (scan.firstNumber && scan.firstText) return;
    double value = 0.0;
    switch (cells_.Read(row.cells[column], value)) {
      case CellKind::Missing:
        break;
      case CellKind::Number:
        Note(scan.firstNumber, row, column);
        break;
      case CellKind::Text:
        Note(scan.firstText, row, column);
        break;
      case CellKind::OutOfRange:
        Note(scan.firstOutOfRange, row, column);
        break;
    }
  }

  void Note(std::optional<Sighting>& sighting, const TableRow& row, std::size_t column) {
    if (!sighting) {
      sighting = Sighting{reader_.Where(row), std::string(trimmed(row.cells[column]))};
    }
  }

  void TargetCell(const TableRow& row, std::size_t column) {
    const std::string_view category =
        categoryOf(row.cells[column], request_.naTexts, request_.targetMissingTexts);
    if (category.empty() || classes_.Has(category)) return;
    const std::string& name = reader_.ColumnNames()[column];
    if (!isUtf8(category)) {
      throw DataError(
          fmt::format("{}: the category in column {} is not UTF-8 text: convert the "
                      "file (iconv -f LATIN1 -t UTF-8)",
                      reader_.Where(row), name));
    }
    if (!classes_.Add(category)) {
      throw DataError(fmt::format(
          "{}: the target {} has more than {} categories: '{}' is one too many; is it really a "
          "class? (--missing {}=TEXT and --na take texts out)",
          reader_.Where(row), name, kMaxClasses, category, name));
    }
  }

  TableReader& reader_;
  const ScanRequest& request_;
  ScaleCells cells_;
  TargetClasses classes_;
  TableScan scan_;
};

}  // namespace

TableScan scanTable(TableReader& reader, const ScanRequest& request, Monitor& monitor) {
  Scanner scanner(reader, request);
  TableRow row;
  while (reader.NextRow(row)) {
    scanner.Row(row);
    if (scanner.Rows() % kReportInterval == 0) {
      monitor.ThrowIfStopped();
      monitor.Update("looking at the columns", reader.ShareRead(),
                     static_cast<double>(scanner.Rows()), "cases");
    }
  }
  monitor.ThrowIfStopped();
  return scanner.Finish();
}

std::string_view categoryOf(std::string_view cell, const std::vector<std::string>& naTexts,
                            const std::vector<std::string>& missingTexts) {
  const std::string_view category = trimmed(cell);
  if (isMissingCell(category, naTexts)) return {};
  const bool isDeclared =
      std::any_of(missingTexts.begin(), missingTexts.end(),
                  [&](const std::string& text) { return namesSameClass(text, category); });
  return isDeclared ? std::string_view() : category;
}

}  // namespace mcbin
