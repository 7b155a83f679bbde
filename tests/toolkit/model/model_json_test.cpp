#include "toolkit/model/model_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/toolkit/support/example_model.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/model/evidence.h"

namespace mcbin {
namespace {

using testing::exampleModel;
using testing::messageOf;
using testing::TemporaryFiles;

TEST(ModelJson, LoadAndSaveGiveTheSameBytes) {
  const std::string text = modelToJson(exampleModel());
  EXPECT_EQ(modelToJson(modelFromJson(text, "m")), text);
}

TEST(ModelJson, AnEqualFrequencyModelHasNoTarget) {
  Model model = exampleModel();
  model.method = Method::EqualFrequency;
  model.target.reset();
  model.weight.reset();
  model.attributes.resize(1);
  AttributeModel& attribute = model.attributes.front();
  for (WeightedCounts& bin : attribute.bins) bin.classWeights.clear();
  attribute.missingCases.classWeights.clear();
  attribute.userMissingCases.classWeights.clear();
  attribute.entropyBefore = attribute.entropyAfter = std::nullopt;
  const std::string text = modelToJson(model);
  EXPECT_EQ(modelToJson(modelFromJson(text, "m")), text);
}

TEST(ModelJson, UnbinnedAndMiscountedCasesAreStoredWhenThereAreAny) {
  Model model = exampleModel();
  EXPECT_EQ(modelToJson(model).find("unbinnedCases"), std::string::npos);
  EXPECT_EQ(modelToJson(model).find("miscountedWeight"), std::string::npos);
  model.attributes[0].unbinnedCases = {3.0, {1.0, 2.0}};
  model.attributes[0].miscountedWeight = 4.0;
  const std::string text = modelToJson(model);
  const Model read = modelFromJson(text, "m");
  EXPECT_EQ(read.attributes[0].unbinnedCases.classWeights[1], 2.0);
  EXPECT_EQ(read.attributes[0].miscountedWeight, 4.0);
  EXPECT_EQ(modelToJson(read), text);
}

TEST(ModelJson, EvidenceIsWrittenWhereTheTargetHasTwoCategories) {
  Model model = exampleModel();
  model.target->evidence = EvidenceOptions{"no", 0.25};
  const std::string text = modelToJson(model);
  EXPECT_EQ(modelToJson(modelFromJson(text, "m")), text);
  const auto json = nlohmann::json::parse(text);
  const EvidenceTable evidence = *evidenceOf(model, model.attributes[0]);
  const auto& attribute = json["attributes"][0];
  EXPECT_EQ(attribute["informationValue"], evidence.informationValue);
  EXPECT_EQ(attribute["trend"], "valley");
  EXPECT_EQ(attribute["bins"][1]["weightOfEvidence"], evidence.rows[1].weightOfEvidence);
  EXPECT_EQ(attribute["missingCases"]["eventRate"], 0.5);
  EXPECT_EQ(attribute["userMissingCases"]["informationValue"], evidence.rows[4].informationValue);
}

TEST(ModelJson, LimitsAreStoredWhenThereAreAny) {
  Model model = exampleModel();
  EXPECT_EQ(modelToJson(model).find("binLimits"), std::string::npos);
  model.options.limits = {0.05, 30.0, 4};
  const std::string text = modelToJson(model);
  const BinLimits limits = modelFromJson(text, "m").options.limits;
  EXPECT_EQ(limits.minShare, 0.05);
  EXPECT_EQ(limits.minWeight, 30.0);
  EXPECT_EQ(limits.maxBins, 4);
  EXPECT_EQ(modelToJson(modelFromJson(text, "m")), text);
}

TEST(ModelJson, GivenCutsAreSaidToBe) {
  Model model = exampleModel();
  EXPECT_EQ(modelToJson(model).find("cutsGiven"), std::string::npos);
  model.attributes[0].cutsGiven = true;
  const std::string text = modelToJson(model);
  EXPECT_TRUE(modelFromJson(text, "m").attributes[0].cutsGiven);
  EXPECT_EQ(modelToJson(modelFromJson(text, "m")), text);
}

TEST(ModelJson, AFileIsRead) {
  const TemporaryFiles files;
  const std::string text = modelToJson(exampleModel());
  Monitor monitor;
  EXPECT_EQ(modelToJson(loadModel(files.Write("model.json", text), monitor)), text);
}

TEST(ModelJson, AFileThatCannotBeReadIsNamed) {
  Monitor monitor;
  EXPECT_EQ(messageOf<DataError>([&] { loadModel("/nonexistent/m.json", monitor); }),
            "cannot open /nonexistent/m.json: No such file or directory");
  const TemporaryFiles files;
  EXPECT_EQ(messageOf<DataError>([&] { loadModel(files.Directory(), monitor); }),
            "cannot open " + files.Directory() + ": it is a directory");
}

TEST(ModelJson, StartsWithFormatAndVersion) {
  EXPECT_EQ(modelToJson(exampleModel()).substr(0, 55),
            "{\n  \"format\": \"mcbin-model\",\n  \"schemaVersion\": 1,\n  \"p");
}

}  // namespace
}  // namespace mcbin
