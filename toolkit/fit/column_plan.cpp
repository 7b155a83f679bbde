#include "toolkit/fit/column_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/input/cells.h"
#include "toolkit/input/column_patterns.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// An option of the form COLUMN=VALUE, parted at the last equals sign that is not the first byte.
std::pair<std::string, std::string> partOption(const std::string& text, const std::string& option,
                                               const char* form) {
  const std::size_t sign = text.rfind('=');
  if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
    throw UsageError(fmt::format("{} {}: write {} {}", option, excerpt(text), option, form));
  }
  return {text.substr(0, sign), text.substr(sign + 1)};
}

std::vector<std::string> splitAtCommas(const std::string& text) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    parts.emplace_back(trimmed(std::string_view(text).substr(start, comma - start)));
    if (comma == text.size()) return parts;
    start = comma + 1;
  }
}

class Planner {
 public:
  Planner(const FitRequest& request, const std::vector<std::string>& names)
      : request_(request), names_(names), columns_(names.size()) {
    for (std::size_t c = 0; c < names.size(); ++c) columns_[c].name = names[c];
  }

  std::vector<ColumnPlan> Plan() {
    Select();
    Exclude();
    TakeTargetAndWeight();
    for (const std::string& text : request_.types) DeclareType(text);
    TakeAllCuts();
    for (const std::string& text : request_.missing) DeclareMissing(text);
    DeclareTargetMissing();
    for (const std::string& text : request_.missingRanges) DeclareRange(text);
    return std::move(columns_);
  }

 private:
  void Select() {
    if (request_.attributePatterns.empty()) return;
    for (ColumnPlan& column : columns_) LeaveOut(column, "not named by --attribute");
    for (const std::string& pattern : request_.attributePatterns) {
      const std::vector<std::size_t> matches = matchColumns(names_, pattern, "--attribute");
      const bool isVeryName = matches.size() == 1 && !isPattern(pattern);
      for (std::size_t c : matches) {
        columns_[c].use = ColumnUse::Attribute;
        columns_[c].reason.clear();
        columns_[c].namedByUser = columns_[c].namedByUser || isVeryName;
      }
    }
  }

  void Exclude() {
    for (const std::string& pattern : request_.excludePatterns) {
      for (std::size_t c : matchColumns(names_, pattern, "--exclude")) {
        if (columns_[c].namedByUser) {
          throw UsageError(fmt::format("column {} is named by --attribute and by --exclude {}",
                                       excerpt(names_[c]), excerpt(pattern)));
        }
        LeaveOut(columns_[c], "excluded by --exclude");
      }
    }
  }

  void TakeTargetAndWeight() {
    if (request_.target) TakeAs(ColumnUse::Target, *request_.target, "--target");
    if (request_.weight) TakeAs(ColumnUse::Weight, *request_.weight, "--weight");
  }

  void TakeAs(ColumnUse use, const std::string& text, const char* option) {
    ColumnPlan& column = columns_[findColumn(names_, text, option)];
    if (column.use == ColumnUse::Target || column.namedByUser) {
      throw UsageError(fmt::format("column {} cannot be named by {} and by {}",
                                   excerpt(column.name), option,
                                   column.namedByUser ? "--attribute" : "--target"));
    }
    column.use = use;
    column.reason.clear();
  }

  static void LeaveOut(ColumnPlan& column, const char* reason) {
    column.use = ColumnUse::LeftOut;
    column.reason = reason;
  }

  void DeclareType(const std::string& text) {
    const auto [name, type] = partOption(text, "--type", "COLUMN=scale or COLUMN=category");
    ColumnPlan& column = columns_[findColumn(names_, name, "--type")];
    if (type != "scale" && type != "category") {
      throw UsageError(fmt::format("--type {}: the type is scale or category, not {}",
                                   excerpt(text), quotedExcerpt(type)));
    }
    const ColumnType declared = type == "scale" ? ColumnType::Scale : ColumnType::Category;
    if (column.declaredType && *column.declaredType != declared) {
      throw UsageError(fmt::format("--type gives column {} two types", excerpt(column.name)));
    }
    if (column.use == ColumnUse::Target && declared == ColumnType::Scale) {
      throw UsageError(fmt::format("--type {}: the target always is a category", excerpt(text)));
    }
    if (column.use == ColumnUse::Weight && declared == ColumnType::Category) {
      throw UsageError(fmt::format("--type {}: the weight always is a number", excerpt(text)));
    }
    column.declaredType = declared;
  }

  void TakeAllCuts() {
    bool hasModel = false;
    for (const GivenCuts& cuts : request_.cuts) {
      hasModel = hasModel || cuts.closedSide;
      TakeCuts(cuts);
    }
    const auto isOfModel = [](const ColumnPlan& column) { return column.cutsOfModel; };
    if (hasModel && std::none_of(columns_.begin(), columns_.end(), isOfModel)) {
      throw DataError("--cuts: no attribute of the model is a column to be cut");
    }
  }

  /// The column that is to get the cut points; null when it is one of a model that is not cut now.
  ColumnPlan* ColumnOf(const GivenCuts& cuts) {
    if (!cuts.closedSide) return &columns_[findColumn(names_, cuts.column, "--cuts")];
    const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const auto& plan) {
      return plan.name == cuts.column && plan.use == ColumnUse::Attribute;
    });
    return column == columns_.end() ? nullptr : &*column;
  }

  void TakeCuts(const GivenCuts& cuts) {
    if (cuts.closedSide && *cuts.closedSide != request_.closedSide) {
      throw UsageError(*cuts.closedSide == ClosedSide::Left
                           ? "--cuts: the bins of the model are [a, b): say --left-closed"
                           : "--cuts: the bins of the model are (a, b]: leave --left-closed out");
    }
    ColumnPlan* const found = ColumnOf(cuts);
    if (found == nullptr) return;
    ColumnPlan& column = *found;
    if (column.use != ColumnUse::Attribute) {
      throw UsageError(fmt::format("--cuts: column {} is not to be cut: {}", excerpt(column.name),
                                   column.use == ColumnUse::Target   ? "it is the target"
                                   : column.use == ColumnUse::Weight ? "it is the weight"
                                                                     : column.reason));
    }
    if (column.cutPoints) {
      throw UsageError(fmt::format("--cuts: column {} is given twice", excerpt(column.name)));
    }
    column.cutPoints = cuts.cutPoints;
    column.cutsOfModel = cuts.closedSide.has_value();
  }

  void DeclareMissing(const std::string& text) {
    const auto [name, list] = partOption(text, "--missing", "COLUMN=VALUE,VALUE...");
    ColumnPlan& column = columns_[findColumn(names_, name, "--missing")];
    for (std::string& value : splitAtCommas(list)) {
      double number = 0.0;
      if (column.use != ColumnUse::Target) {
        if (readNumber(value, number) != NumberReading::Number) {
          throw UsageError(
              fmt::format("--missing {}: {} is not a number; a text that stands for "
                          "a missing value is declared with --na",
                          excerpt(text), quotedExcerpt(value)));
        }
        column.missing.values.push_back(number);
      }
      column.missingTexts.push_back(std::move(value));
    }
  }

  void DeclareTargetMissing() {
    for (ColumnPlan& column : columns_) {
      if (column.use != ColumnUse::Target) continue;
      for (const std::string& text : request_.targetMissing) {
        column.missingTexts.emplace_back(trimmed(text));
      }
    }
  }

  void DeclareRange(const std::string& text) {
    const auto [name, range] = partOption(text, "--missing-range", "COLUMN=LOW:HIGH");
    ColumnPlan& column = columns_[findColumn(names_, name, "--missing-range")];
    if (column.use == ColumnUse::Target) {
      throw UsageError(
          "--missing-range is for numbers; the target's missing categories are named "
          "with --missing");
    }
    if (column.missing.range) {
      throw UsageError(
          fmt::format("--missing-range: column {} has two ranges", excerpt(column.name)));
    }
    const std::size_t colon = range.find(':');
    const std::string low = range.substr(0, colon);
    const std::string high = colon == std::string::npos ? "" : range.substr(colon + 1);
    double ends[2] = {-std::numeric_limits<double>::infinity(),
                      std::numeric_limits<double>::infinity()};
    const bool lowIsRead = low.empty() || readNumber(low, ends[0]) == NumberReading::Number;
    const bool highIsRead = high.empty() || readNumber(high, ends[1]) == NumberReading::Number;
    if (colon == std::string::npos || !lowIsRead || !highIsRead || ends[0] > ends[1] ||
        (low.empty() && high.empty())) {
      throw UsageError(
          fmt::format("--missing-range {}: write COLUMN=LOW:HIGH with numbers, LOW not "
                      "above HIGH; an end left empty is open",
                      excerpt(text)));
    }
    column.missing.range = {ends[0], ends[1]};
  }

  const FitRequest& request_;
  const std::vector<std::string>& names_;
  std::vector<ColumnPlan> columns_;
};

[[noreturn]] void failMixed(const ColumnPlan& column, const ColumnScan& scan) {
  const std::string name = excerpt(column.name);
  const std::string text = quotedExcerpt(scan.firstText->text);
  throw DataError(fmt::format(
      "{}: column {} mixes numbers and texts: {} is a text, while {} ({}) is a number; if the "
      "text stands for a missing value say --na {}, if the column holds categories say --type "
      "{}=category, else --exclude {}",
      scan.firstText->where, name, text, quotedExcerpt(scan.firstNumber->text),
      scan.firstNumber->where, text, name, name));
}

void requireNumbers(const ColumnPlan& column, const ColumnScan& scan) {
  if (scan.firstText) {
    const std::string text = quotedExcerpt(scan.firstText->text);
    throw DataError(fmt::format(
        "{}: {} in column {} is not a number; if it stands for a missing value say --na {}",
        scan.firstText->where, text, excerpt(column.name), text));
  }
  if (scan.firstOutOfRange) {
    throw DataError(fmt::format("{}: {} in column {} is too large for a number",
                                scan.firstOutOfRange->where,
                                quotedExcerpt(scan.firstOutOfRange->text), excerpt(column.name)));
  }
}

/// Why a column cannot be cut, or an empty text.
std::string reasonNotToCut(const ColumnPlan& column, const ColumnScan& scan) {
  if (!scan.unfit.empty()) return scan.unfit;
  if (column.declaredType == ColumnType::Category) return "declared a category";
  if (column.declaredType == ColumnType::Scale) {
    requireNumbers(column, scan);
  } else if (scan.firstText && scan.firstNumber) {
    failMixed(column, scan);
  } else if (scan.firstText) {
    return "categorical: it holds texts";
  }
  requireNumbers(column, scan);
  return scan.firstNumber ? "" : "no case has a value";
}

void checkTarget(const TableScan& scan, const std::string& data, const ColumnPlan& target) {
  if (scan.categories.size() >= 2) return;
  if (scan.categories.empty()) {
    throw DataError(
        fmt::format("{}: no case has a category in the target {}", data, excerpt(target.name)));
  }
  throw DataError(
      fmt::format("{}: the target {} has the single category {}: there is nothing to tell apart",
                  data, excerpt(target.name), quotedExcerpt(scan.categories.front())));
}

}  // namespace

std::vector<ColumnPlan> planColumns(const FitRequest& request,
                                    const std::vector<std::string>& names) {
  return Planner(request, names).Plan();
}

void applyScan(const TableScan& scan, const std::string& data, std::vector<ColumnPlan>& columns) {
  for (std::size_t c = 0; c < columns.size(); ++c) {
    ColumnPlan& column = columns[c];
    const bool isTaken = column.use == ColumnUse::Target || column.use == ColumnUse::Weight;
    if (isTaken && !scan.columns[c].unfit.empty()) {
      throw DataError(fmt::format("column {}: {}", column.name, scan.columns[c].unfit));
    }
    if (column.use == ColumnUse::Target) checkTarget(scan, data, column);
    if (column.use == ColumnUse::Weight) requireNumbers(column, scan.columns[c]);
    if (column.use != ColumnUse::Attribute) continue;
    column.reason = reasonNotToCut(column, scan.columns[c]);
    if (column.reason.empty()) continue;
    if (column.namedByUser || (column.cutPoints && !column.cutsOfModel)) {
      throw DataError(fmt::format("{} {}: the column cannot be cut: {}",
                                  column.namedByUser ? "--attribute" : "--cuts",
                                  excerpt(column.name), column.reason));
    }
    column.use = ColumnUse::LeftOut;
  }
  if (!columnOf(columns, ColumnUse::Attribute)) {
    std::string reasons;
    for (const ColumnPlan& column : columns) {
      if (column.use == ColumnUse::LeftOut) {
        reasons += fmt::format("\n  {}: {}", excerpt(column.name), column.reason);
      }
    }
    if (columns.size() == 1) {
      reasons += "\n  it is the only column: is the separator right? see --delimiter";
    }
    throw DataError("there is no scale column to cut" +
                    (reasons.empty() ? reasons : ":" + reasons));
  }
}

std::optional<std::size_t> columnOf(const std::vector<ColumnPlan>& columns, ColumnUse use) {
  const auto column = std::find_if(columns.begin(), columns.end(),
                                   [use](const ColumnPlan& plan) { return plan.use == use; });
  if (column == columns.end()) return std::nullopt;
  return static_cast<std::size_t>(column - columns.begin());
}

}  // namespace mcbin
