#include "toolkit/fit/fit_model.h"

#include <chrono>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/bin_check.h"
#include "toolkit/fit/case_feed.h"
#include "toolkit/fit/library_run.h"
#include "toolkit/text/utf8.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

ScanRequest scanRequest(const FitRequest& request, const std::vector<ColumnPlan>& columns) {
  ScanRequest scan;
  scan.naTexts = request.naTexts;
  for (const ColumnPlan& column : columns) {
    const bool isSkipped =
        column.use == ColumnUse::LeftOut ||
        (column.use == ColumnUse::Attribute && column.declaredType == ColumnType::Category);
    scan.columns.push_back(column.use == ColumnUse::Target ? ScanAs::Target
                           : isSkipped                     ? ScanAs::Nothing
                                                           : ScanAs::Cells);
    if (column.use == ColumnUse::Target) scan.targetMissingTexts = column.missingTexts;
  }
  return scan;
}

FeedLayout layoutOf(const std::vector<ColumnPlan>& columns) {
  FeedLayout layout;
  layout.targetColumn = columnOf(columns, ColumnUse::Target);
  layout.weightColumn = columnOf(columns, ColumnUse::Weight);
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (columns[c].use == ColumnUse::Attribute) layout.attributeColumns.push_back(c);
  }
  return layout;
}

std::optional<std::string> asUtf8(const std::optional<std::string>& text) {
  return text ? std::optional(mcbin::asUtf8(*text)) : std::nullopt;
}

std::vector<std::string> allAsUtf8(std::vector<std::string> texts) {
  for (std::string& text : texts) text = mcbin::asUtf8(text);
  return texts;
}

FitOptions optionsOf(const FitRequest& request, const std::vector<ColumnPlan>& columns) {
  FitOptions options;
  options.bins = request.bins;
  options.distinctValueThreshold = request.distinctValueThreshold;
  options.smallBinThreshold = request.smallBinThreshold;
  options.naTexts = allAsUtf8(request.naTexts);
  options.attributePatterns = allAsUtf8(request.attributePatterns);
  options.excludePatterns = allAsUtf8(request.excludePatterns);
  for (const ColumnPlan& column : columns) {
    if (!column.declaredType) continue;
    options.types[column.name] = *column.declaredType == ColumnType::Scale ? "scale" : "category";
  }
  return options;
}

/// Everything of the model that is known before the library runs.
Model modelOf(const FitRequest& request, const std::vector<ColumnPlan>& columns,
              const FeedLayout& layout, const std::vector<std::string>& categories) {
  Model model;
  model.program = "mcbin " MCBIN_VERSION;
  model.method = request.method;
  model.closedSide = request.closedSide;
  model.source = {mcbin::asUtf8(request.input.data), asUtf8(request.input.table),
                  asUtf8(request.input.query)};
  model.options = optionsOf(request, columns);
  if (layout.targetColumn) {
    const ColumnPlan& column = columns[*layout.targetColumn];
    model.target = TargetModel{column.name, categories, allAsUtf8(column.missingTexts), {}, 0.0};
  }
  if (layout.weightColumn) {
    const ColumnPlan& column = columns[*layout.weightColumn];
    model.weight = WeightModel{column.name, column.missing, request.rounding};
  }
  for (std::size_t c : layout.attributeColumns) {
    AttributeModel attribute;
    attribute.name = columns[c].name;
    attribute.missing = columns[c].missing;
    model.attributes.push_back(std::move(attribute));
  }
  for (const ColumnPlan& column : columns) {
    if (column.use == ColumnUse::LeftOut) model.leftOut.push_back({column.name, column.reason});
  }
  return model;
}

void takeCounts(const CaseFeed& feed, Model& model) {
  model.cases = feed.Cases();
  if (model.target) {
    model.target->classWeights = feed.ClassWeights();
    model.target->missingWeight = feed.TargetMissingWeight();
  }
  for (std::size_t a = 0; a < model.attributes.size(); ++a) {
    model.attributes[a].missingCases = feed.MissingCases(a);
    model.attributes[a].userMissingCases = feed.UserMissingCases(a);
  }
}

}  // namespace

Model fitModel(const FitRequest& request, CaseSource& cases, const FitWatch& watch,
               FitTimings& timings) {
  auto start = std::chrono::steady_clock::now();
  std::vector<ColumnPlan> columns = planColumns(request, cases.ColumnNames());
  const TableScan seen = scanTable(cases, scanRequest(request, columns), watch.monitor);
  applyScan(seen, shownName(request.input.data), columns);
  timings.scanning = secondsSince(start);
  watch.monitor.Clear();
  if (watch.planned) watch.planned(columns, seen.rows, seen.categories);

  start = std::chrono::steady_clock::now();
  cases.Rewind();
  const FeedLayout layout = layoutOf(columns);
  Model model = modelOf(request, columns, layout, seen.categories);
  CaseFeed feed(cases, columns, layout, seen, request.naTexts, request.rounding, watch.timesFeed);
  runLibrary(feed, seen.rows, watch.monitor, model);
  takeCounts(feed, model);
  checkBins(model);
  if (watch.noted) {
    for (const std::string& note : feed.NeverMet()) watch.noted(note);
  }
  watch.monitor.Clear();
  timings.feeding = feed.Seconds();
  timings.binning = secondsSince(start) - timings.feeding;
  if (model.cases.read != seen.rows) {
    throw DataError(shownName(request.input.data) + " changed while it was read: run it again");
  }
  return model;
}

}  // namespace mcbin
