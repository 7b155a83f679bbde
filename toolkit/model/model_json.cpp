#include "toolkit/model/model_json.h"

#include "toolkit/input/byte_source.h"
#include "toolkit/model/evidence.h"
#include "toolkit/model/json_text.h"

namespace mcbin {
namespace {

// Objects are made as such: one that a key makes of null crashes when memory runs out on the way.

Json numbersToJson(const std::vector<double>& values) {
  Json array = Json::array();
  for (double value : values) array.push_back(numberToJson(value));
  return array;
}

Json optionalToJson(const std::optional<double>& value) {
  return value ? numberToJson(*value) : Json(nullptr);
}

template <class T>
Json optionalToJson(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json missingToJson(const MissingRules& rules) {
  Json json = Json::object();
  json["values"] = numbersToJson(rules.values);
  json["range"] =
      rules.range ? numbersToJson({rules.range->first, rules.range->second}) : Json(nullptr);
  return json;
}

Json countsToJson(const WeightedCounts& counts) {
  Json json = Json::object();
  json["weight"] = counts.weight;
  json["classWeights"] = counts.classWeights;
  return json;
}

/// Members for other programs; reading takes no notice of them, since they follow from the rest.
void addEvidence(const Evidence& evidence, Json& json) {
  json["eventRate"] = numberToJson(evidence.eventRate);
  json["weightOfEvidence"] = numberToJson(evidence.weightOfEvidence);
  json["informationValue"] = numberToJson(evidence.informationValue);
}

void addEvidence(const AttributeModel& attribute, const EvidenceTable& evidence, Json& json) {
  json["informationValue"] = numberToJson(evidence.informationValue);
  json["trend"] = nameOf(kTrends, trendOf(attribute, evidence));
  std::size_t row = 0;
  for (Json& bin : json["bins"]) addEvidence(evidence.rows[row++], bin);
  for (const char* beside : {"missingCases", "userMissingCases", "unbinnedCases"}) {
    if (json.contains(beside)) addEvidence(evidence.rows[row++], json[beside]);
  }
}

Json attributeToJson(const Model& model, const AttributeModel& attribute) {
  Json json = Json::object();
  json["name"] = attribute.name;
  json["missing"] = missingToJson(attribute.missing);
  json["status"] = Json::object();
  json["status"]["code"] = attribute.status.code;
  json["status"]["severity"] = nameOf(kSeverities, attribute.status.severity);
  json["status"]["reason"] = attribute.status.reason;
  json["distinctValues"] = attribute.distinctValues;
  json["minimum"] = optionalToJson(attribute.minimum);
  json["maximum"] = optionalToJson(attribute.maximum);
  json["totalWeight"] = attribute.totalWeight;
  json["totalWeightWithMissing"] = attribute.totalWeightWithMissing;
  for (const SearchNumber& number : kSearchNumbers) {
    json[number.name] = optionalToJson(attribute.*number.value);
  }
  json["cutPoints"] = numbersToJson(attribute.cutPoints);
  if (attribute.cutsGiven) json["cutsGiven"] = true;
  json["bins"] = Json::array();
  for (const WeightedCounts& bin : attribute.bins) json["bins"].push_back(countsToJson(bin));
  json["missingCases"] = countsToJson(attribute.missingCases);
  json["userMissingCases"] = countsToJson(attribute.userMissingCases);
  if (attribute.unbinnedCases.weight > 0.0) {
    json["unbinnedCases"] = countsToJson(attribute.unbinnedCases);
  }
  if (attribute.miscountedWeight > 0.0) json["miscountedWeight"] = attribute.miscountedWeight;
  const auto evidence = evidenceOf(model, attribute);
  if (evidence) addEvidence(attribute, *evidence, json);
  return json;
}

Json optionsToJson(const Model& model) {
  const FitOptions& options = model.options;
  Json json = Json::object();
  json["closedSide"] = nameOf(kClosedSides, model.closedSide);
  json["bins"] = options.bins;
  json["distinctValueThreshold"] = options.distinctValueThreshold;
  json["smallBinThreshold"] = options.smallBinThreshold;
  json["naTexts"] = options.naTexts;
  json["attributePatterns"] = options.attributePatterns;
  json["excludePatterns"] = options.excludePatterns;
  json["types"] = Json::object();
  for (const auto& [column, type] : options.types) json["types"][column] = type;
  if (options.limits.Any()) {
    json["binLimits"]["minShare"] = options.limits.minShare;
    json["binLimits"]["minWeight"] = options.limits.minWeight;
    json["binLimits"]["maxBins"] = options.limits.maxBins;
  }
  return json;
}

Json targetToJson(const TargetModel& target) {
  Json json = Json::object();
  json["name"] = target.name;
  json["categories"] = target.categories;
  json["missingTexts"] = target.missingTexts;
  json["classWeights"] = target.classWeights;
  json["missingWeight"] = target.missingWeight;
  if (target.evidence) {
    json["evidence"]["event"] = target.evidence->event;
    json["evidence"]["adjustment"] = target.evidence->adjustment;
  }
  return json;
}

Json weightToJson(const WeightModel& weight) {
  Json json = Json::object();
  json["name"] = weight.name;
  json["missing"] = missingToJson(weight.missing);
  json["rounding"] = nameOf(kWeightRoundings, weight.rounding);
  return json;
}

}  // namespace

std::string modelToJson(const Model& model) {
  Json json = Json::object();
  json["format"] = kModelFormat;
  json["schemaVersion"] = kModelSchemaVersion;
  json["program"] = model.program;
  json["library"] = model.library;
  json["method"] = nameOf(kMethods, model.method);
  json["source"] = Json::object();
  json["source"]["data"] = model.source.data;
  json["source"]["table"] = optionalToJson(model.source.table);
  json["source"]["query"] = optionalToJson(model.source.query);
  json["options"] = optionsToJson(model);
  json["cases"] = Json::object();
  json["cases"]["read"] = model.cases.read;
  json["cases"]["used"] = model.cases.used;
  json["cases"]["droppedForWeight"] = model.cases.droppedForWeight;
  json["target"] = model.target ? targetToJson(*model.target) : Json(nullptr);
  json["weight"] = model.weight ? weightToJson(*model.weight) : Json(nullptr);
  json["attributes"] = Json::array();
  for (const auto& attribute : model.attributes) {
    json["attributes"].push_back(attributeToJson(model, attribute));
  }
  json["leftOut"] = Json::array();
  for (const LeftOutColumn& column : model.leftOut) {
    json["leftOut"].push_back({{"name", column.name}, {"reason", column.reason}});
  }
  return jsonText(json) + "\n";
}

Model loadModel(const std::string& path, Monitor& monitor) {
  return modelFromJson(readWhole(path, monitor), shownName(path), monitor);
}

}  // namespace mcbin
