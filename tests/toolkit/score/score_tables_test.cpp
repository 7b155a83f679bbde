#include "toolkit/score/score_tables.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/toolkit/support/memory_table.h"
#include "toolkit/fit/text_cases.h"

namespace mcbin {
namespace {

using ::testing::ElementsAre;

/// Two attributes that were cut at 10: 8 cases of two classes, from 0 to 20.
Model fittedModel() {
  Model model;
  model.source.data = "fit.csv";
  model.cases = {8, 8, 0};
  model.target = TargetModel{"t", {"no", "yes"}, {}, {4.0, 4.0}, 0.0};
  for (const char* name : {"x", "y"}) {
    AttributeModel attribute;
    attribute.name = name;
    attribute.missing.values = {99.0};
    attribute.minimum = 0.0;
    attribute.maximum = 20.0;
    attribute.totalWeight = attribute.totalWeightWithMissing = 8.0;
    attribute.cutPoints = {10.0};
    attribute.bins = {{4.0, {3.0, 1.0}}, {4.0, {1.0, 3.0}}};
    attribute.missingCases = attribute.userMissingCases = {0.0, {0.0, 0.0}};
    attribute.entropyBefore = 1.0;
    attribute.entropyAfter = 0.8112781244591328;
    model.attributes.push_back(attribute);
  }
  return model;
}

ModelScore scoreOf(const Model& model, std::vector<std::vector<std::string>> rows,
                   const ScoreRequest& request = {"t", {}, {"new.csv", {}, {}}}) {
  testing::MemoryTable table({"x", "y", "t"}, std::move(rows));
  TextCases cases(table, {});
  Monitor monitor;
  return scoreModel(model, request, cases, monitor);
}

ModelScore someScore(const Model& model) {
  return scoreOf(model,
                 {{"1", "5", "no"}, {"2", "", "yes"}, {"11", "25", "no"}, {"12", "-3", "yes"}});
}

TEST(ScoreTables, RowsStandBesideThoseOfTheFit) {
  const Model model = fittedModel();
  const ModelScore score = someScore(model);
  EXPECT_EQ(
      scoreTable(model, score, 1).Text(),
      "#  y           weight   share  in fit    no %  in fit   yes %  in fit      WoE   in fit"
      "      IV  in fit     PSI\n"
      "-  ----------  ------  ------  ------  ------  ------  ------  ------  -------  -------"
      "  ------  ------  ------\n"
      "0  (-inf, 10]       2   50.0%   50.0%   50.0%   75.0%   50.0%   25.0%   0.0000   1.0986"
      "  0.0000  0.5493  0.0015\n"
      "1  (10, inf)        1   25.0%   50.0%  100.0%   25.0%    0.0%   75.0%   1.0986  -1.0986"
      "  0.5493  0.5493  0.1864\n"
      "   missing          1   25.0%    0.0%    0.0%       -  100.0%       -  -1.0986   0.0000"
      "  0.5493  0.0000  0.4762\n"
      "   total            4  100.0%  100.0%   50.0%   50.0%   50.0%   50.0%"
      "                    1.0986  1.0986  0.6640\n");
}

TEST(ScoreTables, TheLeastStableAttributeIsFirst) {
  const Model model = fittedModel();
  const ModelScore score = someScore(model);
  EXPECT_THAT(rankByStability(score), ElementsAre(1, 0));
  EXPECT_EQ(shiftText(score, 1), "y: stability index 0.6640, large shift");
  const auto rows = scoreRanking(model, score).Rows();
  EXPECT_THAT(rows[0], ElementsAre("#", "attribute", "PSI", "stability", "missing", "in fit",
                                   "gain", "in fit", "IV", "in fit", "remark"));
  EXPECT_THAT(rows[1],
              ElementsAre("1", "y", "0.6640", "large shift", "25.0%", "0.0%", "0.2516", "0.1887",
                          "1.0986", "1.0986",
                          "weight 1 below 0, the smallest value of the fit; weight 1 above "
                          "20, the largest value of the fit; weight 1 missing, none in the "
                          "fit"));
  EXPECT_THAT(rows[2], ElementsAre("2", "x", "0.0000", "stable", "0.0%", "0.0%", "0.0000", "0.1887",
                                   "0.0000", "1.0986", ""));
}

TEST(ScoreTables, WithoutATargetThereAreOnlyCounts) {
  const Model model = fittedModel();
  const ModelScore score = scoreOf(model, {{"1", "2", "?"}}, {{}, {}, {"new.csv", {}, {}}});
  EXPECT_THAT(scoreTable(model, score, 0).Rows().front(),
              ElementsAre("#", "x", "weight", "share", "in fit", "PSI"));
  EXPECT_THAT(scoreRanking(model, score).Rows().front(),
              ElementsAre("#", "attribute", "PSI", "stability", "missing", "in fit", "remark"));
  EXPECT_EQ(scoreSummary(model, score),
            "Score of new.csv: 1 case, 1 used\n"
            "Supervised binning of fit.csv: 8 cases, 8 used\n"
            "Target t: no (4, 50.0%), yes (4, 50.0%); the event is yes\n");
}

TEST(ScoreTables, RowsThatTheFitNeverHadAreNamed) {
  Model model = fittedModel();
  model.attributes[0].bins[1] = {0.0, {0.0, 0.0}};
  const ModelScore score = scoreOf(model, {{"11", "1", "no"}, {"99", "1", "no"}});
  EXPECT_EQ(unseenText(model, score, 0),
            "weight 1 in (10, inf), none in the fit; weight 1 user-missing, none in the fit");
  EXPECT_EQ(unseenText(model, score, 1), "");
}

}  // namespace
}  // namespace mcbin
