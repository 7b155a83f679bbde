#include "toolkit/fit/column_scan.h"

#include <fmt/format.h>

#include <algorithm>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"
#include "toolkit/text/utf8.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::uint64_t kReportInterval = 4096;

class Scanner {
 public:
  Scanner(CaseSource& cases, const ScanRequest& request) : cases_(cases), request_(request) {
    scan_.columns.resize(request.columns.size());
    for (std::size_t c = 0; c < request.columns.size(); ++c) {
      scan_.columns[c].unfit = cases.WhyUnfit(c);
      if (!scan_.columns[c].unfit.empty()) continue;
      if (request.columns[c] == ScanAs::Cells) open_.push_back(c);
      if (request.columns[c] == ScanAs::Target) target_ = c;
    }
  }

  void Case() {
    ++scan_.rows;
    bool isSettled = false;
    for (std::size_t c : open_) {
      Cell(c);
      isSettled = isSettled || IsSettled(c);
    }
    if (isSettled) std::erase_if(open_, [this](std::size_t c) { return IsSettled(c); });
    if (target_) TargetCell(*target_);
  }

  TableScan Finish() {
    scan_.categories = classes_.Names();
    scan_.codes = classes_.Codes();
    return std::move(scan_);
  }
  std::uint64_t Rows() const { return scan_.rows; }

 private:
  /// Whether more cells of the column can tell nothing more. One of numbers and texts is refused
  /// whatever follows.
  bool IsSettled(std::size_t column) const {
    const ColumnScan& scan = scan_.columns[column];
    return scan.firstNumber && (scan.firstText || cases_.HoldsOnlyNumbers(column));
  }

  void Cell(std::size_t column) {
    ColumnScan& scan = scan_.columns[column];
    double value = 0.0;
    switch (cases_.ReadNumber(column, value)) {
      case CellKind::Missing:
        break;
      case CellKind::Number:
        Note(scan.firstNumber, column);
        break;
      case CellKind::Text:
        Note(scan.firstText, column);
        break;
      case CellKind::OutOfRange:
        Note(scan.firstOutOfRange, column);
        break;
    }
  }

  void Note(std::optional<Sighting>& sighting, std::size_t column) {
    if (!sighting) {
      sighting = Sighting{cases_.Where(), std::string(trimmed(cases_.ReadText(column)))};
    }
  }

  void TargetCell(std::size_t column) {
    const std::string_view category =
        categoryOf(cases_.ReadText(column), request_.naTexts, request_.targetMissingTexts);
    if (category.empty() || classes_.Has(category)) return;
    const std::string name = excerpt(cases_.ColumnNames()[column]);
    if (!isUtf8(category)) {
      throw DataError(
          fmt::format("{}: the category in column {} is not UTF-8 text: convert the "
                      "file (iconv -f LATIN1 -t UTF-8)",
                      cases_.Where(), name));
    }
    if (cases_.HoldsOnlyNumbers(column) && (category == "inf" || category == "-inf")) {
      throw DataError(fmt::format("{}: the target {} is infinite, which names no category",
                                  cases_.Where(), name));
    }
    if (!classes_.Add(category)) {
      throw DataError(fmt::format(
          "{}: the target {} has more than {} categories: {} is one too many; is it really a "
          "class? (--missing {}=TEXT and --na take texts out)",
          cases_.Where(), name, kMaxClasses, quotedExcerpt(category), name));
    }
  }

  CaseSource& cases_;
  const ScanRequest& request_;
  TargetClasses classes_;
  std::vector<std::size_t> open_;  ///< Columns whose next cell may tell something.
  std::optional<std::size_t> target_;
  TableScan scan_;
};

}  // namespace

TableScan scanTable(CaseSource& cases, const ScanRequest& request, Monitor& monitor) {
  Scanner scanner(cases, request);
  while (cases.NextCase()) {
    scanner.Case();
    if (scanner.Rows() % kReportInterval == 0) {
      monitor.ThrowIfStopped();
      monitor.Update("looking at the columns", cases.ShareRead(),
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
