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
#include "toolkit/model/model_json.h"

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
  Model model = fitted(rows);
  const ModelScore score = scored(model, rows);
  AttributeModel& fitted = model.attributes.front();
  ASSERT_EQ(fitted.bins.size(), 2U);
  EXPECT_EQ(score.shifts.front().stabilityIndex, 0.0);
  EXPECT_EQ(score.shifts.front().rowIndices, (std::vector{0.0, 0.0, 0.0, 0.0}));
  EXPECT_EQ(score.shifts.front().weightBelow + score.shifts.front().weightAbove, 0.0);
  const AttributeModel& counted = score.counted.attributes.front();
  EXPECT_NEAR(counted.InformationGain(), fitted.InformationGain(), 1e-15);
  // But for what a score does not tell, the counts make the model of the fit again.
  model.source = {};
  fitted.distinctValues = 0;
  fitted.entropyBefore = counted.entropyBefore;
  fitted.entropyAfter = counted.entropyAfter;
  EXPECT_EQ(modelToJson(score.counted), modelToJson(model));
}

TEST(ScoreModel, EvidenceIsThatOfTheEventOfTheModel) {
  Model model = fitted(someRows(0, 500));
  model.target->evidence = EvidenceOptions{model.target->categories[0], 2.0};
  const Rows rows = {{"5", "", "0"}, {"5", "", "1"}, {"99", "", "1"}};
  const auto evidence = [&](const ScoreRequest& request) {
    const Model counted = scored(model, rows, request).counted;
    return evidenceOf(counted, counted.attributes.front());
  };
  ASSERT_TRUE(evidence({"t", {}}));
  EXPECT_DOUBLE_EQ(evidence({"t", {}})->rows[0].weightOfEvidence, std::log(0.5 / 1.0));
  EXPECT_DOUBLE_EQ(evidence({"t", {}})->rows[1].weightOfEvidence, std::log(1.5 / 2.0));
  EXPECT_FALSE(evidence({}));
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
  EXPECT_NEAR(score.shifts.front().stabilityIndex,
              term(0.6, 0.5) + term(0.3, 0.25) + term(0.1, 0.25), 1e-14);
  EXPECT_FALSE(score.counted.target);
  EXPECT_FALSE(score.counted.attributes.front().entropyBefore);

  attribute.userMissingCases.weight = 100.0;
  const auto moved = [&](double fit, double here) { return term(fit / 200.5, here / 4.5); };
  EXPECT_NEAR(scored(model, rows, {}).shifts.front().stabilityIndex,
              moved(60.0, 2.0) + moved(30.0, 1.0) + moved(10.0, 1.0) + moved(100.5, 0.5), 1e-14);

  // One case of very many is missing in the fit and none here: not negative.
  attribute.bins[0].weight = attribute.bins[1].weight = 1e6;
  attribute.missingCases.weight = 1.0;
  attribute.userMissingCases.weight = 0.0;
  const ModelScore even = scored(model, {{"5", "", "0"}, {"99", "", "0"}}, {});
  EXPECT_GT(even.shifts.front().rowIndices[2], 0.0);
}

TEST(ScoreModel, NumbersAreTheSameClassHoweverTheyAreWritten) {
  const Model model = fitted(someRows(0, 500));
  const ModelScore score =
      scored(model, {{"5", "2", "0.0"}, {"5", "1.7", " 1e0 "}, {"5", "3", ""}});
  EXPECT_EQ(score.counted.attributes.front().bins.front().classWeights,
            (std::vector<double>{2.0, 1.0}));
  EXPECT_EQ(score.counted.target->classWeights, (std::vector<double>{2.0, 1.0}));
  EXPECT_EQ(score.counted.target->missingWeight, 3.0);
}

TEST(ScoreModel, ValuesBeyondThoseOfTheFitAreWeighed) {
  const Model model = fitted(someRows(0, 500));
  const AttributeModel& attribute = model.attributes.front();
  const std::string least = std::to_string(static_cast<int>(*attribute.minimum));
  const std::string most = std::to_string(static_cast<int>(*attribute.maximum));
  const Rows rows = {{"-7", "2", "0"}, {"-1", "9", "0"},  {least, "9", "0"},
                     {most, "9", "1"}, {"1e9", "3", "1"}, {"1e9", "5", ""}};
  const ModelScore score = scored(model, rows);
  EXPECT_EQ(score.shifts.front().weightBelow, 2.0);
  EXPECT_EQ(score.shifts.front().weightAbove, 3.0);
  EXPECT_EQ(score.counted.attributes.front().minimum, -7.0);
  EXPECT_EQ(score.counted.attributes.front().maximum, 1e9);
}

TEST(ScoreModel, TheReadingOfAStabilityIndexChangesAtATenthAndAQuarter) {
  EXPECT_EQ(stabilityOf(std::nextafter(0.1, 0.0)), Stability::Stable);
  EXPECT_EQ(stabilityOf(0.1), Stability::SomeShift);
  EXPECT_EQ(stabilityOf(0.25), Stability::SomeShift);
  EXPECT_EQ(stabilityOf(std::nextafter(0.25, 1.0)), Stability::LargeShift);
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
  EXPECT_EQ(message({{"5", "1", "0"}}, {"u", {}}),
            "the data have no column u, the target: name another with --target or say --no-target");
  EXPECT_EQ(message({{"5", "1", "0"}}, {"t", "v"}),
            "the data have no column v, the weights: name another with --weight or say "
            "--no-weight");
  EXPECT_EQ(messageOf<DataError>([&] { scored(model, {}, {}, {"y"}); }),
            "the data have no column x, which the model cuts");
  EXPECT_EQ(messageOf<UsageError>([&] {
              scored(model, {}, {"t", "t"});
            }),
            "column t cannot be named by --weight and by --target");
  EXPECT_EQ(message({{"5", "1e308", "0"}, {"5", "1e308", "0"}}),
            "table, line 2: the weights in column w add up to more than a number can hold: divide "
            "them all by the same large number");
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
