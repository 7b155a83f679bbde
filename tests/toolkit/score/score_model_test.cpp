#include "toolkit/score/score_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/toolkit/support/memory_table.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/fit/text_cases.h"

namespace mcbin {
namespace {

using testing::MemoryTable;
using testing::messageOf;
using Rows = std::vector<std::vector<std::string>>;

Rows someRows(int from, int to) {
  Rows rows;
  for (int i = from; i < to; ++i) {
    const std::string x = i % 13 == 0 ? "" : i % 17 == 0 ? "-1" : std::to_string(i * 37 % 101);
    rows.push_back({x, std::to_string(i % 4), i * 37 % 101 > 60 ? "1" : "0"});
  }
  return rows;
}

Model fitted(const Rows& rows) {
  FitRequest request;
  request.target = "t";
  request.weight = "w";
  request.missing = {"x=-1"};
  MemoryTable table({"x", "w", "t"}, rows);
  TextCases cases(table, request.naTexts);
  Monitor monitor;
  FitTimings timings;
  return fitModel(request, cases, {monitor, {}, false}, timings);
}

ModelScore scored(const Model& model, const Rows& rows, const ScoreRequest& request = {"t", "w"},
                  const std::vector<std::string>& names = {"x", "w", "t"}) {
  MemoryTable table(names, rows);
  TextCases cases(table, {});
  Monitor monitor;
  return scoreModel(model, request, cases, monitor);
}

TEST(ScoreModel, TheDataOfTheFitGiveTheTablesOfTheFit) {
  const Rows rows = someRows(0, 500);
  const Model model = fitted(rows);
  const ModelScore score = scored(model, rows);
  EXPECT_EQ(score.cases.read, model.cases.read);
  EXPECT_EQ(score.cases.used, model.cases.used);
  EXPECT_EQ(score.cases.droppedForWeight, model.cases.droppedForWeight);
  const AttributeModel& attribute = model.attributes.front();
  const AttributeScore& result = score.attributes.front();
  ASSERT_EQ(attribute.bins.size(), 2U);
  const std::vector<WeightedCounts> expected = {attribute.bins[0], attribute.bins[1],
                                                attribute.missingCases, attribute.userMissingCases};
  ASSERT_EQ(result.rows.size(), expected.size());
  for (std::size_t row = 0; row < expected.size(); ++row) {
    EXPECT_EQ(result.rows[row].weight, expected[row].weight);
    EXPECT_EQ(result.rows[row].classWeights, expected[row].classWeights);
  }
  EXPECT_EQ(result.stabilityIndex, 0.0);
  EXPECT_NEAR(*result.informationGain, attribute.InformationGain(), 1e-15);
}

TEST(ScoreModel, EvidenceIsThatOfTheEventOfTheModel) {
  Model model = fitted(someRows(0, 500));
  model.target->evidence = EvidenceOptions{model.target->categories[0], 2.0};
  const Rows rows = {{"5", "", "0"}, {"5", "", "1"}, {"99", "", "1"}};
  const AttributeScore score = scored(model, rows, {"t", {}}).attributes.front();
  ASSERT_TRUE(score.evidence);
  EXPECT_DOUBLE_EQ(score.evidence->rows[0].weightOfEvidence, std::log(0.5 / 1.0));
  EXPECT_DOUBLE_EQ(score.evidence->rows[1].weightOfEvidence, std::log(1.5 / 2.0));
  EXPECT_FALSE(scored(model, rows, {}).attributes.front().evidence);
}

TEST(ScoreModel, TheStabilityIndexIsThatOfTheShares) {
  Model model = fitted(someRows(0, 500));
  AttributeModel& attribute = model.attributes.front();
  attribute.bins[0].weight = 60.0;
  attribute.bins[1].weight = 30.0;
  attribute.missingCases.weight = 10.0;
  attribute.userMissingCases.weight = 0.0;
  const Rows rows = {{"5", "", "0"}, {"5", "", "0"}, {"99", "", "0"}, {"", "", "1"}};
  const ModelScore score = scored(model, rows, {});
  const auto term = [](double e, double a) { return (a - e) * std::log(a / e); };
  EXPECT_NEAR(score.attributes.front().stabilityIndex,
              term(0.6, 0.5) + term(0.3, 0.25) + term(0.1, 0.25), 1e-14);
  EXPECT_FALSE(score.attributes.front().informationGain);

  attribute.userMissingCases.weight = 100.0;
  const double added = (0.0 - 0.5) * std::log((0.5 / 4.0) / (100.5 / 200.0));
  EXPECT_NEAR(scored(model, rows, {}).attributes.front().stabilityIndex,
              term(0.3, 0.5) + term(0.15, 0.25) + term(0.05, 0.25) + added, 1e-14);
}

TEST(ScoreModel, NumbersAreTheSameClassHoweverTheyAreWritten) {
  const Model model = fitted(someRows(0, 500));
  const ModelScore score =
      scored(model, {{"5", "2", "0.0"}, {"5", "1.7", " 1e0 "}, {"5", "3", ""}});
  EXPECT_EQ(score.attributes.front().rows.front().classWeights, (std::vector<double>{2.0, 1.0}));
}

TEST(ScoreModel, WhatCannotBeScoredIsNamed) {
  const Model model = fitted(someRows(0, 500));
  const auto message = [&](const Rows& rows, const ScoreRequest& request = {"t", "w"}) {
    return messageOf<DataError>([&] { scored(model, rows, request); });
  };
  EXPECT_EQ(message({{"5", "1", "2"}}),
            "table, line 1: the target t holds '2', which is no class of the model");
  EXPECT_EQ(message({{"5", "1", "0"}, {"five", "1", "0"}}),
            "table, line 2: column x holds 'five', which is no number that can be used");
  EXPECT_EQ(message({{"5", "1", "0"}}, {"u", {}}), "the data have no column u");
  EXPECT_EQ(message({{"5", "-1", "0"}, {"5", "", "0"}}), "no case can be used");
  EXPECT_EQ(message({{"5", "1", ""}}), "no case has a category in the target t");
  Model without = model;
  without.target.reset();
  EXPECT_EQ(messageOf<DataError>([&] {
              scored(without, {}, {"t", {}});
            }),
            "the model has no target, so it knows no classes");
}

}  // namespace
}  // namespace mcbin
