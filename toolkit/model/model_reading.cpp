#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <set>

#include "toolkit/errors.h"
#include "toolkit/model/evidence.h"
#include "toolkit/model/json_node.h"
#include "toolkit/model/model_json.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// A model nests 5 deep; what is added later may be deeper.
constexpr int kDeepest = 100;
constexpr std::int64_t kMaxInt = std::numeric_limits<int>::max();
constexpr std::int64_t kMaxCount = 9'007'199'254'740'992;  // 2^53: what JSON readers agree on.

MissingRules readMissing(const JsonNode& node) {
  MissingRules rules;
  rules.values = node["values"].Numbers();
  const JsonNode range = node["range"];
  if (!range.IsNull()) {
    const std::vector<double> ends = range.Numbers();
    if (ends.size() != 2 || ends[0] > ends[1]) range.Fail("must be null or [low, high]");
    rules.range = {ends[0], ends[1]};
  }
  return rules;
}

WeightedCounts readCounts(const JsonNode& node, std::size_t categories) {
  WeightedCounts counts;
  counts.weight = node["weight"].Weight();
  counts.classWeights = node["classWeights"].Weights();
  if (counts.classWeights.size() != categories) {
    node["classWeights"].Fail(
        fmt::format("must have one weight for each of the {} categories", categories));
  }
  return counts;
}

AttributeStatus readStatus(const JsonNode& node) {
  AttributeStatus status;
  status.code = static_cast<long>(node["code"].Integer(0, kMaxInt));
  const JsonNode severity = node["severity"];
  if (severity.Text() == "error") severity.Fail("is \"error\": no bins were found; fit it again");
  status.severity = severity.OneOf(kSeverities);
  status.reason = node["reason"].Text();
  return status;
}

std::optional<double> readSearchNumber(const JsonNode& attribute, const SearchNumber& number) {
  if (number.required && attribute[number.name].IsNull()) return std::nullopt;
  const std::optional<JsonNode> node = attribute.Optional(number.name);
  return node ? std::optional(node->Weight()) : std::nullopt;
}

AttributeModel readAttribute(const JsonNode& node, std::size_t categories) {
  AttributeModel attribute;
  attribute.name = node["name"].Text();
  attribute.missing = readMissing(node["missing"]);
  attribute.status = readStatus(node["status"]);
  attribute.distinctValues = static_cast<std::uint32_t>(
      node["distinctValues"].Integer(0, std::numeric_limits<std::uint32_t>::max()));
  attribute.minimum = node["minimum"].OptionalNumber();
  attribute.maximum = node["maximum"].OptionalNumber();
  attribute.totalWeight = node["totalWeight"].Weight();
  attribute.totalWeightWithMissing = node["totalWeightWithMissing"].Weight();
  for (const SearchNumber& number : kSearchNumbers) {
    attribute.*number.value = readSearchNumber(node, number);
  }
  attribute.cutPoints = node["cutPoints"].Numbers();
  for (std::size_t i = 1; i < attribute.cutPoints.size(); ++i) {
    if (!(attribute.cutPoints[i - 1] < attribute.cutPoints[i])) {
      node["cutPoints"].Fail("must ascend strictly");
    }
  }
  const auto given = node.Optional("cutsGiven");
  attribute.cutsGiven = given && given->Flag();
  for (const JsonNode& bin : node["bins"].Elements()) {
    attribute.bins.push_back(readCounts(bin, categories));
  }
  if (attribute.bins.size() != attribute.cutPoints.size() + 1) {
    node["bins"].Fail(fmt::format("must have {} elements, one more than there are cut points",
                                  attribute.cutPoints.size() + 1));
  }
  attribute.missingCases = readCounts(node["missingCases"], categories);
  attribute.userMissingCases = readCounts(node["userMissingCases"], categories);
  const std::optional<JsonNode> unbinned = node.Optional("unbinnedCases");
  if (unbinned) attribute.unbinnedCases = readCounts(*unbinned, categories);
  const std::optional<JsonNode> miscounted = node.Optional("miscountedWeight");
  if (miscounted) attribute.miscountedWeight = miscounted->Weight();
  return attribute;
}

void readOptions(const JsonNode& node, Model& model) {
  FitOptions& options = model.options;
  model.closedSide = node["closedSide"].OneOf(kClosedSides);
  options.bins = static_cast<int>(node["bins"].Integer(0, kMaxInt));
  options.distinctValueThreshold =
      static_cast<int>(node["distinctValueThreshold"].Integer(0, kMaxInt));
  options.smallBinThreshold = node["smallBinThreshold"].Weight();
  options.naTexts = node["naTexts"].Texts();
  options.attributePatterns = node["attributePatterns"].Texts();
  options.excludePatterns = node["excludePatterns"].Texts();
  const JsonNode types = node["types"];
  for (const std::string& column : types.Keys()) {
    options.types[column] = types[column.c_str()].Text();
  }
  if (const auto limits = node.Optional("binLimits")) {
    options.limits.minShare = (*limits)["minShare"].Weight();
    options.limits.minWeight = (*limits)["minWeight"].Weight();
    options.limits.maxBins = static_cast<int>((*limits)["maxBins"].Integer(0, kMaxInt));
  }
}

EvidenceOptions readEvidence(const JsonNode& node, const std::vector<std::string>& categories) {
  EvidenceOptions options;
  options.event = node["event"].Text();
  if (categories.size() != 2) node.Fail("is for a target of two categories");
  if (options.event != categories[0] && options.event != categories[1]) {
    node["event"].Fail("must be one of the categories");
  }
  options.adjustment = node["adjustment"].Weight();
  if (!isPossibleAdjustment(options.adjustment)) {
    node["adjustment"].Fail("must lie between 1e-100 and 1e+100");
  }
  return options;
}

TargetModel readTarget(const JsonNode& node) {
  TargetModel target;
  target.name = node["name"].Text();
  target.categories = node["categories"].Texts();
  target.missingTexts = node["missingTexts"].Texts();
  target.classWeights = node["classWeights"].Weights();
  if (target.classWeights.size() != target.categories.size()) {
    node["classWeights"].Fail("must have one weight for each category");
  }
  target.missingWeight = node["missingWeight"].Weight();
  const std::optional<JsonNode> evidence = node.Optional("evidence");
  if (evidence) target.evidence = readEvidence(*evidence, target.categories);
  return target;
}

WeightModel readWeight(const JsonNode& node) {
  WeightModel weight;
  weight.name = node["name"].Text();
  weight.missing = readMissing(node["missing"]);
  weight.rounding = node["rounding"].OneOf(kWeightRoundings);
  return weight;
}

void readAttributes(const JsonNode& node, Monitor& monitor, Model& model) {
  const std::size_t categories = model.target ? model.target->categories.size() : 0;
  std::set<std::string> names;
  for (const JsonNode& element : node.Elements()) {
    monitor.ThrowIfStopped();
    model.attributes.push_back(readAttribute(element, categories));
    if (!names.insert(model.attributes.back().name).second) {
      element["name"].Fail("repeats the name of an earlier attribute");
    }
  }
}

void checkVersion(const JsonNode& root) {
  if (root["format"].Text() != kModelFormat) {
    root["format"].Fail("is not \"mcbin-model\": this is not a model written by mcbin fit");
  }
  const JsonNode version = root["schemaVersion"];
  const std::int64_t number = version.Integer(1, kMaxInt);
  if (number > kModelSchemaVersion) {
    version.Fail(fmt::format(
        "is {}, newer than this program reads (up to {}): use the mcbin that wrote the model, or "
        "a newer one",
        number, kModelSchemaVersion));
  }
}

Json parseJson(const std::string& text, const std::string& name, Monitor& monitor) {
  const auto checkDepth = [&](int depth, Json::parse_event_t /*event*/, const Json& /*value*/) {
    monitor.ThrowIfStopped();
    if (depth <= kDeepest) return true;
    throw DataError(fmt::format(
        "{}: nested more than {} deep: name a model that mcbin fit -o wrote", name, kDeepest));
  };
  try {
    return Json::parse(text, checkDepth);
  } catch (const Json::exception& error) {
    // The number in front means nothing to a user; what was read last may be the whole file.
    std::string what = error.what();
    what.erase(std::min(what.find("; last read: "), what.size()));
    const std::size_t start = what.find("] ");
    throw DataError(fmt::format("{}: not JSON: {}: name a model that mcbin fit -o wrote",
                                visibleText(name),
                                start == std::string::npos ? what : what.substr(start + 2)));
  }
}

}  // namespace

Model modelFromJson(const std::string& text, const std::string& name) {
  Monitor unwatched;
  return modelFromJson(text, name, unwatched);
}

Model modelFromJson(const std::string& text, const std::string& name, Monitor& monitor) {
  const Json json = parseJson(text, name, monitor);
  const JsonNode root(json, name);
  checkVersion(root);
  Model model;
  model.program = root["program"].Text();
  model.library = root["library"].Text();
  model.method = root["method"].OneOf(kMethods);
  model.source.data = root["source"]["data"].Text();
  model.source.table = root["source"]["table"].OptionalText();
  model.source.query = root["source"]["query"].OptionalText();
  readOptions(root["options"], model);
  const JsonNode cases = root["cases"];
  model.cases.read = static_cast<std::uint64_t>(cases["read"].Integer(0, kMaxCount));
  model.cases.used = static_cast<std::uint64_t>(cases["used"].Integer(0, kMaxCount));
  model.cases.droppedForWeight =
      static_cast<std::uint64_t>(cases["droppedForWeight"].Integer(0, kMaxCount));
  const JsonNode target = root["target"];
  if (target.IsNull() != (model.method == Method::EqualFrequency)) {
    target.Fail("must be there in a supervised model and null in an equal-frequency one");
  }
  if (!target.IsNull()) model.target = readTarget(target);
  const JsonNode weight = root["weight"];
  if (!weight.IsNull()) model.weight = readWeight(weight);
  readAttributes(root["attributes"], monitor, model);
  for (const JsonNode& column : root["leftOut"].Elements()) {
    model.leftOut.push_back({column["name"].Text(), column["reason"].Text()});
  }
  return model;
}

}  // namespace mcbin
