#include "toolkit/fit/fit_model.h"

#include <chrono>
#include <optional>
#include <utility>

#include "toolkit/fit/bin_check.h"
#include "toolkit/fit/bin_limits.h"
#include "toolkit/fit/parallel_passes.h"
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

FeedLayout layoutOf(const std::vector<ColumnPlan>& columns, ClosedSide closedSide) {
  FeedLayout layout;
  layout.closedSide = closedSide;
  layout.targetColumn = columnOf(columns, ColumnUse::Target);
  layout.weightColumn = columnOf(columns, ColumnUse::Weight);
  for (std::size_t c = 0; c < columns.size(); ++c) {
    if (columns[c].use == ColumnUse::Attribute) layout.attributeColumns.push_back(c);
  }
  return layout;
}

/// By the ordinary run of the library, or as `watch` has it.
PassResult secondPass(const PassSetting& setting, const FeedLayout& layout, CaseSource& cases,
                      const FitWatch& watch) {
  const bool cutsAreGiven = !setting.request.cuts.empty();
  if (watch.binned && !cutsAreGiven) {
    if (std::optional<PassResult> result = watch.binned(setting, layout)) return *std::move(result);
  }
  cases.Rewind();
  return runPasses(setting, layout, cases, watch.jobs, watch.another, watch.monitor);
}

}  // namespace

Model fitModel(const FitRequest& request, CaseSource& cases, const FitWatch& watch,
               FitTimings& timings) {
  checkNumbers(request);
  auto start = std::chrono::steady_clock::now();
  std::vector<ColumnPlan> columns = planColumns(request, cases.ColumnNames());
  const TableScan seen = scanTable(cases, scanRequest(request, columns), watch.monitor);
  timings.scanning = secondsSince(start);
  return fitScanned(request, std::move(columns), seen, watch,
                    [&](const PassSetting& setting, const FeedLayout& layout) {
                      start = std::chrono::steady_clock::now();
                      PassResult result = secondPass(setting, layout, cases, watch);
                      timings.feeding = result.feedSeconds;
                      timings.binning = secondsSince(start) - timings.feeding;
                      return result;
                    });
}

Model fitScanned(const FitRequest& request, std::vector<ColumnPlan> columns, const TableScan& seen,
                 const FitWatch& watch,
                 const std::function<PassResult(const PassSetting&, const FeedLayout&)>& bin) {
  applyScan(seen, shownName(request.input.data), columns);
  watch.monitor.Clear();
  if (watch.planned) watch.planned(columns, seen.rows, seen.categories);
  PassResult result =
      bin({request, columns, seen, watch.timesFeed}, layoutOf(columns, request.closedSide));
  checkBins(result.model);
  joinBins(result.model);
  if (watch.noted) {
    for (const auto& [_, note] : result.neverMet) watch.noted(note);
  }
  watch.monitor.Clear();
  return std::move(result.model);
}

}  // namespace mcbin
