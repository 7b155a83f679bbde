#include "toolkit/fit/binning_pass.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/library_run.h"
#include "toolkit/fit/target_classes.h"
#include "toolkit/input/cells.h"
#include "toolkit/text/utf8.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

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
  options.limits = {request.minBinShare.value_or(0.0), request.minBinWeight.value_or(0.0),
                    request.maxBins.value_or(0)};
  options.naTexts = allAsUtf8(request.naTexts);
  options.attributePatterns = allAsUtf8(request.attributePatterns);
  options.excludePatterns = allAsUtf8(request.excludePatterns);
  for (const ColumnPlan& column : columns) {
    if (!column.declaredType) continue;
    options.types[column.name] = *column.declaredType == ColumnType::Scale ? "scale" : "category";
  }
  return options;
}

/// Empty unless the target has two categories.
std::optional<EvidenceOptions> evidenceOf(const FitRequest& request, const TargetModel& target) {
  const std::vector<std::string>& categories = target.categories;
  if (categories.size() != 2) {
    if (!request.event && !request.evidenceAdjustment) return std::nullopt;
    throw DataError(fmt::format("{}: the target {} has {} categories; evidence is for two",
                                request.event ? "--event" : "--woe-adjustment",
                                excerpt(target.name), categories.size()));
  }
  EvidenceOptions options;
  options.event = categories.back();
  options.adjustment = request.evidenceAdjustment.value_or(options.adjustment);
  if (!request.event) return options;
  const std::string wanted(trimmed(*request.event));
  const auto event =
      std::find_if(categories.begin(), categories.end(),
                   [&](const std::string& category) { return namesSameClass(category, wanted); });
  if (event == categories.end()) {
    throw DataError(fmt::format("--event {}: the target {} has the categories {} and {}",
                                excerpt(*request.event), excerpt(target.name),
                                quotedExcerpt(categories[0]), quotedExcerpt(categories[1])));
  }
  options.event = *event;
  return options;
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

void takeGivenAttributes(CaseFeed& feed, Model& model) {
  for (std::size_t a = 0; a < model.attributes.size(); ++a) {
    std::optional<AttributeModel> given = feed.GivenAttribute(a);
    if (!given) continue;
    AttributeModel& attribute = model.attributes[a];
    attribute = std::move(*given);
    attribute.status = {0, Severity::Ok, "cut points given"};
    if (!model.target) continue;
    attribute.entropyBefore = entropyOf(sumOverBins(attribute.bins));
    attribute.entropyAfter = meanEntropy(attribute.bins);
  }
}

}  // namespace

SourceModel sourceOf(const InputOptions& input) {
  return {mcbin::asUtf8(input.data), asUtf8(input.table), asUtf8(input.query)};
}

Model plannedModel(const PassSetting& setting, const FeedLayout& layout) {
  const FitRequest& request = setting.request;
  const std::vector<ColumnPlan>& columns = setting.columns;
  Model model;
  model.program = "mcbin " MCBIN_VERSION;
  model.method = request.method;
  model.closedSide = request.closedSide;
  model.source = sourceOf(request.input);
  model.options = optionsOf(request, columns);
  if (layout.targetColumn) {
    const ColumnPlan& column = columns[*layout.targetColumn];
    model.target =
        TargetModel{column.name, setting.scan.categories, allAsUtf8(column.missingTexts), {}, 0.0};
    model.target->evidence = evidenceOf(request, *model.target);
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

PassResult runPass(const PassSetting& setting, const FeedLayout& layout, CaseSource& cases,
                   Monitor& monitor) {
  const FitRequest& request = setting.request;
  PassResult result;
  result.model = plannedModel(setting, layout);
  CaseFeed feed(cases, setting.columns, layout, setting.scan, request.naTexts, request.rounding,
                setting.timesFeed);
  runLibrary(feed, setting.scan.rows, monitor, result.model);
  takeCounts(feed, result.model);
  takeGivenAttributes(feed, result.model);
  if (result.model.cases.read != setting.scan.rows) failChanged(setting);
  result.neverMet = feed.NeverMet();
  result.feedSeconds = feed.Seconds();
  return result;
}

void failChanged(const PassSetting& setting) {
  throw DataError(shownName(setting.request.input.data) +
                  " changed while it was read: run it again");
}

}  // namespace mcbin
