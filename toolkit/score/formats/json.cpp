#include <optional>
#include <string>

#include "toolkit/model/json_text.h"
#include "toolkit/score/score_formats.h"
#include "toolkit/score/score_tables.h"

namespace mcbin {
namespace {

constexpr int kScoreSchemaVersion = 1;

template <class T>
Json optionalToJson(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

void addEvidence(const char* suffix, const Evidence& evidence, Json& json) {
  const auto name = [&](const char* what) { return std::string(what) + suffix; };
  json[name("eventRate")] = evidence.eventRate;
  json[name("weightOfEvidence")] = evidence.weightOfEvidence;
  json[name("informationValue")] = evidence.informationValue;
}

Json rowToJson(const ScoreRow& row, bool hasClasses) {
  Json json = Json::object();
  json["bin"] = row.bin;
  json["name"] = row.name;
  json["weight"] = row.counts.weight;
  json["weightInFit"] = row.inFit.weight;
  if (hasClasses) {
    json["classWeights"] = row.counts.classWeights;
    json["classWeightsInFit"] = row.inFit.classWeights;
  }
  if (row.evidence) addEvidence("", *row.evidence, json);
  if (row.evidenceInFit) addEvidence("InFit", *row.evidenceInFit, json);
  json["stabilityIndex"] = row.stabilityIndex;
  return json;
}

Json attributeToJson(const Model& model, const ModelScore& score, std::size_t attribute) {
  const AttributeModel& counted = score.counted.attributes[attribute];
  const AttributeModel& fitted = model.attributes[attribute];
  const AttributeShift& shift = score.shifts[attribute];
  Json json = Json::object();
  json["name"] = counted.name;
  json["stabilityIndex"] = shift.stabilityIndex;
  json["stability"] = nameOf(kStabilities, stabilityOf(shift.stabilityIndex));
  json["weightBelowFit"] = shift.weightBelow;
  json["weightAboveFit"] = shift.weightAbove;
  if (score.counted.target) {
    json["informationGain"] = counted.InformationGain();
    json["informationGainInFit"] = fitted.InformationGain();
  }
  if (const auto evidence = evidenceOf(score.counted, counted)) {
    json["informationValue"] = evidence->informationValue;
    json["informationValueInFit"] = evidenceOf(model, fitted)->informationValue;
  }
  json["rows"] = Json::array();
  for (const ScoreRow& row : scoreRows(model, score, attribute)) {
    json["rows"].push_back(rowToJson(row, score.counted.target.has_value()));
  }
  return json;
}

}  // namespace

/// The score after score.schema.json, the attributes in the order of the model.
std::string scoreJson(const Model& model, const ModelScore& score) {
  const Model& counted = score.counted;
  Json json = Json::object();
  json["format"] = "mcbin-score";
  json["schemaVersion"] = kScoreSchemaVersion;
  json["program"] = "mcbin " MCBIN_VERSION;
  json["source"] = Json::object();
  json["source"]["data"] = counted.source.data;
  json["source"]["table"] = optionalToJson(counted.source.table);
  json["source"]["query"] = optionalToJson(counted.source.query);
  json["cases"] = Json::object();
  json["cases"]["read"] = counted.cases.read;
  json["cases"]["used"] = counted.cases.used;
  json["cases"]["droppedForWeight"] = counted.cases.droppedForWeight;
  json["target"] = counted.target ? Json(counted.target->name) : Json(nullptr);
  if (counted.target) json["categories"] = counted.target->categories;
  json["weight"] = counted.weight ? Json(counted.weight->name) : Json(nullptr);
  json["attributes"] = Json::array();
  for (std::size_t a = 0; a < model.attributes.size(); ++a) {
    json["attributes"].push_back(attributeToJson(model, score, a));
  }
  return jsonText(json) + "\n";
}

}  // namespace mcbin
