#include "toolkit/model/evidence.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

std::vector<WeightedCounts> rowsOf(const std::vector<std::vector<double>>& classWeights) {
  std::vector<WeightedCounts> rows;
  for (const std::vector<double>& weights : classWeights) {
    rows.push_back({weights[0] + weights[1], weights});
  }
  return rows;
}

TEST(Evidence, ComparesTheSharesOfTheClasses) {
  const EvidenceTable table = evidenceOf(rowsOf({{30, 10}, {10, 40}}), 1);
  EXPECT_DOUBLE_EQ(table.rows[0].eventRate, 0.25);
  EXPECT_DOUBLE_EQ(table.rows[0].weightOfEvidence, std::log(0.75 / 0.2));
  EXPECT_DOUBLE_EQ(table.rows[0].informationValue, 0.55 * std::log(0.75 / 0.2));
  EXPECT_DOUBLE_EQ(table.rows[1].weightOfEvidence, std::log(0.25 / 0.8));
  EXPECT_DOUBLE_EQ(table.informationValue, 0.55 * std::log(0.75 / 0.2) - 0.55 * std::log(0.3125));
}

TEST(Evidence, TheOtherEventTurnsTheSign) {
  const auto rows = rowsOf({{30, 10}, {10, 40}});
  EXPECT_DOUBLE_EQ(evidenceOf(rows, 0).rows[0].weightOfEvidence,
                   -evidenceOf(rows, 1).rows[0].weightOfEvidence);
  EXPECT_DOUBLE_EQ(evidenceOf(rows, 0).informationValue, evidenceOf(rows, 1).informationValue);
}

TEST(Evidence, ABinWithoutOneClassIsAdjusted) {
  const EvidenceTable table = evidenceOf(rowsOf({{8, 0}, {2, 10}}), 1);
  EXPECT_DOUBLE_EQ(table.rows[0].weightOfEvidence, std::log((8.5 / 10) / (0.5 / 10)));
  EXPECT_DOUBLE_EQ(table.rows[0].informationValue, 0.8 * std::log(17.0));
  EXPECT_DOUBLE_EQ(table.rows[1].weightOfEvidence, std::log(0.2));
  EXPECT_DOUBLE_EQ(evidenceOf(rowsOf({{8, 0}, {2, 10}}), 1, 1.0).rows[0].weightOfEvidence,
                   std::log(9.0));
}

TEST(Evidence, WithoutWeightThereIsNone) {
  const EvidenceTable table = evidenceOf(rowsOf({{0, 0}, {1, 1}}), 1);
  EXPECT_EQ(table.rows[0].eventRate, 0.0);
  EXPECT_EQ(table.rows[0].weightOfEvidence, 0.0);
  EXPECT_EQ(table.rows[0].informationValue, 0.0);
  const EvidenceTable single = evidenceOf(rowsOf({{0, 3}}), 1);
  EXPECT_EQ(single.rows[0].eventRate, 1.0);
  EXPECT_EQ(single.rows[0].weightOfEvidence, 0.0);
}

TEST(Evidence, OfAnAttributeTakesMissingCasesIn) {
  AttributeModel attribute;
  attribute.bins = rowsOf({{30, 10}});
  attribute.missingCases = rowsOf({{5, 5}}).front();
  attribute.userMissingCases = rowsOf({{5, 25}}).front();
  const EvidenceTable table = evidenceOf(attribute, 1);
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_DOUBLE_EQ(table.rows[0].weightOfEvidence, std::log(0.75 / 0.25));
  EXPECT_DOUBLE_EQ(table.rows[2].weightOfEvidence, std::log(0.125 / 0.625));
}

TEST(Evidence, OfAModelIsThatOfItsEvent) {
  Model model = testing::exampleModel();
  const AttributeModel attribute = model.attributes[0];
  EXPECT_EQ(eventOf(model), std::size_t{1});
  EXPECT_EQ(evidenceOf(model, attribute)->informationValue,
            evidenceOf(attribute, 1).informationValue);
  model.target->evidence = EvidenceOptions{"no", 2.0};
  EXPECT_EQ(eventOf(model), std::size_t{0});
  EXPECT_EQ(evidenceOf(model, attribute)->informationValue,
            evidenceOf(attribute, 0, 2.0).informationValue);
  model.target->categories.emplace_back("third");
  EXPECT_FALSE(eventOf(model));
  EXPECT_FALSE(evidenceOf(model, attribute));
}

/// The trend of bins with these event rates out of 10 cases; 0 stands for a bin without cases.
std::string trendOfRates(const std::vector<double>& events) {
  AttributeModel attribute;
  for (const double e : events) {
    attribute.bins.push_back({e == 0 ? 0.0 : 10.0, {e == 0 ? 0.0 : 10.0 - e, e}});
  }
  attribute.missingCases = attribute.userMissingCases = {1.0, {0.0, 1.0}};
  return nameOf(kTrends, trendOf(attribute, evidenceOf(attribute, 1)));
}

TEST(Evidence, TheTrendHasAName) {
  EXPECT_EQ(trendOfRates({3}), "none");
  EXPECT_EQ(trendOfRates({3, 3}), "none");
  EXPECT_EQ(trendOfRates({1, 2, 2, 5}), "rising");
  EXPECT_EQ(trendOfRates({5, 0, 4, 1}), "falling");
  EXPECT_EQ(trendOfRates({1, 5, 5, 2}), "peak");
  EXPECT_EQ(trendOfRates({4, 1, 2}), "valley");
  EXPECT_EQ(trendOfRates({4, 1, 2, 1}), "none");
}

}  // namespace
}  // namespace mcbin
