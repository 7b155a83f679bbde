#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/toolkit/support/example_model.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/model/json_text.h"
#include "toolkit/model/model_json.h"

namespace mcbin {
namespace {

using testing::exampleModel;
using testing::messageOf;

Json exampleJson() { return Json::parse(modelToJson(exampleModel())); }

std::string errorOf(const std::function<void(Json&)>& change) {
  Json json = exampleJson();
  change(json);
  return messageOf<DataError>([&] { modelFromJson(jsonText(json), "m"); });
}

TEST(ModelReading, ANewerSchemaIsRefusedInASentence) {
  EXPECT_EQ(errorOf([](Json& j) { j["schemaVersion"] = 2; }),
            "m: schemaVersion is 2, newer than this program reads (up to 1): use the mcbin that "
            "wrote the model, or a newer one");
}

TEST(ModelReading, WhatANewerProgramAddsIsPassedOver) {
  Json json = exampleJson();
  json["added"] = {1, 2};
  json["options"]["added"] = "x";
  json["attributes"][0]["added"] = nullptr;
  json["attributes"][0]["bins"][0]["added"] = 0.5;
  const Model model = modelFromJson(jsonText(json), "m");
  EXPECT_EQ(modelToJson(model), modelToJson(exampleModel()));
}

TEST(ModelReading, OtherJsonIsNoModel) {
  EXPECT_EQ(messageOf<DataError>([] { modelFromJson("{}", "m"); }),
            "m: the model has no \"format\"");
  EXPECT_EQ(messageOf<DataError>([] { modelFromJson("[]", "m"); }),
            "m: the model must be an object");
  EXPECT_EQ(errorOf([](Json& j) { j["format"] = "x"; }),
            "m: format is not \"mcbin-model\": this is not a model written by mcbin fit");
  EXPECT_THAT(messageOf<DataError>([] { modelFromJson("age,income\n1,2\n", "m.csv"); }),
              ::testing::AllOf(::testing::StartsWith("m.csv: not JSON: "),
                               ::testing::EndsWith(": name a model that mcbin fit -o wrote")));
}

TEST(ModelReading, NestingHasALimit) {
  const auto nested = [](std::size_t depth) {
    return messageOf<DataError>(
        [&] { modelFromJson(std::string(depth, '[') + std::string(depth, ']'), "m"); });
  };
  EXPECT_EQ(nested(100), "m: the model must be an object");
  for (const std::size_t depth : {std::size_t{102}, std::size_t{100'000}}) {
    EXPECT_EQ(nested(depth), "m: nested more than 100 deep: name a model that mcbin fit -o wrote");
  }
}

TEST(ModelReading, EveryMemberIsNeeded) {
  const Json whole = exampleJson();
  for (const auto& item : whole.items()) {
    const std::string message = errorOf([&](Json& j) { j.erase(item.key()); });
    EXPECT_EQ(message, "m: the model has no \"" + item.key() + "\"");
  }
  for (const auto& item : whole["attributes"][0].items()) {
    if (item.key() == "informationValue" || item.key() == "trend") continue;  // not read
    const std::string message = errorOf([&](Json& j) { j["attributes"][0].erase(item.key()); });
    EXPECT_EQ(message, "m: attributes[0] has no \"" + item.key() + "\"");
  }
}

const std::pair<std::string, std::function<void(Json&)>> kWrongValues[] = {
    {"m: target.evidence.event must be one of the categories",
     [](Json& j) {
       j["target"]["evidence"] = {{"event", "maybe"}, {"adjustment", 1.0}};
     }},
    {"m: target.evidence is for a target of two categories",
     [](Json& j) {
       j["target"]["categories"] = {"a", "b", "c"};
       j["target"]["classWeights"] = {1.0, 1.0, 1.0};
       j["target"]["evidence"] = {{"event", "a"}, {"adjustment", 1.0}};
     }},
    {"m: attributes[0].cutsGiven must be true or false",
     [](Json& j) { j["attributes"][0]["cutsGiven"] = 1; }},
    {"m: target.evidence.adjustment must lie between 1e-100 and 1e+100",
     [](Json& j) {
       j["target"]["evidence"] = {{"event", "no"}, {"adjustment", 0.0}};
     }},
    {"m: attributes[0].cutPoints must ascend strictly",
     [](Json& j) {
       j["attributes"][0]["cutPoints"] = {2.0, 2.0};
     }},
    {"m: attributes[0].bins must have 2 elements, one more than there are cut points",
     [](Json& j) { j["attributes"][0]["cutPoints"] = {2.0}; }},
    {"m: attributes[0].cutPoints[0] must be a number, \"inf\" or \"-inf\"",
     [](Json& j) { j["attributes"][0]["cutPoints"] = {"nan"}; }},
    {"m: attributes[0].bins[1].classWeights must have one weight for each of the 2 categories",
     [](Json& j) { j["attributes"][0]["bins"][1]["classWeights"] = {1.0}; }},
    {"m: attributes[0].bins[0].weight must be a finite number that is not negative",
     [](Json& j) { j["attributes"][0]["bins"][0]["weight"] = -1; }},
    {"m: attributes[0].entropyBefore must be a finite number that is not negative",
     [](Json& j) { j["attributes"][0]["entropyBefore"] = "inf"; }},
    {"m: attributes[0].entropyAfter must be a finite number that is not negative",
     [](Json& j) { j["attributes"][0]["entropyAfter"] = -0.5; }},
    {"m: attributes[0].unbinnedCases has no \"classWeights\"",
     [](Json& j) {
       j["attributes"][0]["unbinnedCases"] = {{"weight", 1.0}};
     }},
    {"m: attributes[0].miscountedWeight must be a finite number that is not negative",
     [](Json& j) { j["attributes"][0]["miscountedWeight"] = -1.0; }},
    {"m: attributes[0].missing.range must be null or [low, high]",
     [](Json& j) {
       j["attributes"][0]["missing"]["range"] = {2.0, 1.0};
     }},
    {"m: attributes[1].name repeats the name of an earlier attribute",
     [](Json& j) { j["attributes"][1]["name"] = j["attributes"][0]["name"]; }},
    {"m: target must be there in a supervised model and null in an equal-frequency one",
     [](Json& j) { j["target"] = nullptr; }},
    {"m: target.classWeights must have one weight for each category",
     [](Json& j) { j["target"]["classWeights"] = {1.0}; }},
    {"m: method must be \"supervised\" or \"equal-frequency\"",
     [](Json& j) { j["method"] = "magic"; }},
    {"m: options.closedSide must be \"right\" or \"left\"",
     [](Json& j) { j["options"]["closedSide"] = "both"; }},
    {"m: options.bins must be a whole number from 0 to 2147483647",
     [](Json& j) { j["options"]["bins"] = 2.5; }},
    {"m: schemaVersion must be a whole number from 1 to 2147483647",
     [](Json& j) { j["schemaVersion"] = 0; }},
    {"m: attributes[1].status.severity is \"error\": no bins were found; fit it again",
     [](Json& j) { j["attributes"][1]["status"]["severity"] = "error"; }},
    {"m: program must be a text", [](Json& j) { j["program"] = 1; }},
    {"m: leftOut must be an array", [](Json& j) { j["leftOut"] = 1; }},
};

TEST(ModelReading, WrongValuesNameTheirPlace) {
  for (const auto& [expected, change] : kWrongValues) EXPECT_EQ(errorOf(change), expected);
}

}  // namespace
}  // namespace mcbin
