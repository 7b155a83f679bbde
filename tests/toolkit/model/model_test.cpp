#include "toolkit/model/model.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

TEST(Model, EntropyOfClassWeights) {
  EXPECT_EQ(entropyOf({}), 0.0);
  EXPECT_EQ(entropyOf({0.0, 0.0}), 0.0);
  EXPECT_EQ(entropyOf({3.0, 0.0}), 0.0);
  EXPECT_EQ(entropyOf({2.0, 2.0}), 1.0);
  EXPECT_EQ(entropyOf({1.0, 1.0, 1.0, 1.0}), 2.0);
}

TEST(Model, SumsOverBins) {
  EXPECT_EQ(sumOverBins({}), std::vector<double>());
  EXPECT_EQ(sumOverBins({{3.0, {1.0, 2.0}}, {5.0, {5.0, 0.0}}}), (std::vector<double>{6.0, 2.0}));
}

TEST(Model, GainNeedsCutPoints) {
  AttributeModel attribute = testing::exampleAttribute();
  EXPECT_EQ(attribute.InformationGain(), 0.9709505944546686 - 0.325);
  attribute.cutPoints.clear();
  EXPECT_EQ(attribute.InformationGain(), 0.0);
  attribute = testing::exampleAttribute();
  attribute.entropyAfter.reset();
  EXPECT_EQ(attribute.InformationGain(), 0.0);
}

TEST(Model, GainOverAllCasesTakesMissingCasesAsBins) {
  AttributeModel attribute;
  EXPECT_EQ(attribute.GainOverAllCases(), 0.0);
  attribute.bins = {{1.0, {1.0, 0.0}}, {1.0, {0.0, 1.0}}};
  EXPECT_EQ(attribute.GainOverAllCases(), 1.0);
  attribute.missingCases = {6.0, {3.0, 3.0}};
  EXPECT_EQ(attribute.GainOverAllCases(), 0.25);
  attribute.userMissingCases = {8.0, {8.0, 0.0}};
  EXPECT_DOUBLE_EQ(attribute.GainOverAllCases(), entropyOf({12.0, 4.0}) - 6.0 / 16.0);
}

TEST(Model, RanksByGainAndKeepsTheOrderOfTies) {
  Model model;
  for (double gain : {2.0, 0.5, 2.0, 0.1}) {
    AttributeModel attribute;
    attribute.name = std::to_string(model.attributes.size());
    attribute.bins = {{2.0 + gain, {2.0, gain}}, {2.0 + gain, {gain, 2.0}}};
    model.attributes.push_back(attribute);
  }
  EXPECT_EQ(rankByGain(model), (std::vector<std::size_t>{3, 1, 0, 2}));
  EXPECT_EQ(findAttribute(model, "2"), &model.attributes[2]);
  EXPECT_EQ(findAttribute(model, "9"), nullptr);
}

TEST(Model, MissingRulesHoldValuesAndBothEndsOfTheRange) {
  const MissingRules rules{{7.0}, std::pair{10.0, 20.0}};
  for (double value : {7.0, 10.0, 15.0, 20.0}) EXPECT_TRUE(rules.Contains(value)) << value;
  for (double value : {6.9, 9.9, 20.1}) EXPECT_FALSE(rules.Contains(value)) << value;
}

}  // namespace
}  // namespace mcbin
