// Examples small enough to be worked out by hand, so that the model is not trusted blindly.
#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <limits>
#include <string>

#include "plain_model/model.h"

namespace plain_model {
namespace {

const double kMissing = MCMV::gMissingValue;
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

std::vector<Row> rowsOf(const std::vector<std::pair<double, double>>& valuesAndWeights) {
  std::vector<Row> rows;
  for (const auto& [value, weight] : valuesAndWeights) {
    rows.push_back({value, 0, weight});
  }
  return rows;
}

double totalOf(const std::vector<Row>& rows) {
  double total = 0.0;
  for (const Row& row : rows) {
    total += row.weight;
  }
  return total;
}

EqualFrequencyCuts cut(const std::vector<std::pair<double, double>>& valuesAndWeights, int bins,
                       bool rightClosed) {
  Events events;
  const std::vector<Row> rows = rowsOf(valuesAndWeights);
  return cutEqualFrequency(rows, totalOf(rows), bins, rightClosed, true, events);
}

Variable variable(const std::string& name, int role) {
  Variable made;
  made.name = name;
  made.role = role;
  return made;
}

Variable categorical(const std::string& name, int categories, int role) {
  Variable made = variable(name, role);
  made.kind = Kind::kCategorical;
  made.level = kNumericLevel;
  made.declared = categories;
  return made;
}

Variable weight() {
  Variable made = variable("weight", kWeightRole);
  made.kind = Kind::kWeight;
  made.level = kWeightLevel;
  return made;
}

// An attribute x (index 0) and a target (index 1) with the given number of categories.
VariableList attributeAndTarget(int categories) {
  VariableList list;
  list.AddScale(variable("x", kAttributeRole));
  list.AddCategorical(categorical("target", categories, kTargetRole));
  return list;
}

Settings twentyBins() {
  Settings settings;
  settings.numberOfBins = 20;
  return settings;
}

TEST(PlainEqualFrequency, ExactlyMetTargetCutsBetweenTheValues) {
  const EqualFrequencyCuts cuts = cut({{1, 1}, {2, 1}, {3, 1}, {4, 1}}, 2, true);
  EXPECT_EQ(cuts.cutPoints, std::vector<double>({2.5}));
  EXPECT_EQ(cuts.binWeights, std::vector<double>({2, 2}));
}

TEST(PlainEqualFrequency, RunThatCrossesTheTargetBelongsToTheClosedBin) {
  const EqualFrequencyCuts cuts = cut({{1, 1}, {2, 5}, {3, 1}}, 2, true);
  EXPECT_EQ(cuts.cutPoints, std::vector<double>({2}));
  EXPECT_EQ(cuts.binWeights, std::vector<double>({6, 1}));
}

TEST(PlainEqualFrequency, RunThatCrossesTheTargetBelongsToTheNextOpenBin) {
  const EqualFrequencyCuts cuts = cut({{1, 1}, {2, 5}, {3, 1}}, 2, false);
  EXPECT_EQ(cuts.cutPoints, std::vector<double>({2}));
  EXPECT_EQ(cuts.binWeights, std::vector<double>({1, 6}));
}

TEST(PlainEqualFrequency, SingleValueIsOneBinInBothBorderModes) {
  for (const bool rightClosed : {true, false}) {
    const EqualFrequencyCuts cuts = cut({{7, 2}, {7, 3}}, 4, rightClosed);
    EXPECT_TRUE(cuts.done);
    EXPECT_TRUE(cuts.cutPoints.empty());
    EXPECT_EQ(cuts.binWeights, std::vector<double>({5}));
  }
}

TEST(PlainEqualFrequency, LastTargetIsTheTotal) {
  const EqualFrequencyCuts cuts = cut({{1, 1}, {2, 1}, {3, 1}}, 3, true);
  EXPECT_EQ(cuts.cutPoints.size(), 2U);
  EXPECT_EQ(cuts.binWeights, std::vector<double>({1, 1, 1}));
}

TEST(PlainEqualFrequency, NothingToDoWithoutBinsOrWeight) {
  EXPECT_FALSE(cut({{1, 1}}, 0, true).done);
  EXPECT_FALSE(cut({{1, 0}}, 2, true).done);
  EXPECT_FALSE(cut({}, 2, true).done);
}

TEST(PlainWeight, IsRoundedByTheOption) {
  Variable made = weight();
  EXPECT_EQ(made.EncodeWeight(2.7), 2.0);
  EXPECT_EQ(made.EncodeWeight(0.9), std::nullopt);
  made.rounding = 1;
  EXPECT_EQ(made.EncodeWeight(2.5), 3.0);
  EXPECT_EQ(made.EncodeWeight(0.4), std::nullopt);
  EXPECT_EQ(made.EncodeWeight(-3.0), std::nullopt);
  made.rounding = 2;
  EXPECT_EQ(made.EncodeWeight(0.4), 0.4);
  EXPECT_EQ(made.EncodeWeight(0.0), std::nullopt);
  EXPECT_EQ(made.EncodeWeight(kNaN), std::nullopt);
  EXPECT_EQ(made.EncodeWeight(kInfinity), std::nullopt);
  EXPECT_EQ(made.EncodeWeight(kMissing), std::nullopt);
}

TEST(PlainDataPass, TargetAndAttributeCodesDifferAtMinusOneAndAHalf) {
  VariableList list = attributeAndTarget(300);
  list.AddCategorical(categorical("codes", 300, kAttributeRole));
  Events events;
  const PreparedData data = prepare(list, {{1, -1.5, -0.5}, {2, 255, -1.0}, {3, 0, -1.5}}, events);
  EXPECT_EQ(data.columns[0], std::vector<double>({kMissing, 255, 0}));
  EXPECT_EQ(data.columns[2][0], 0.0);
  EXPECT_EQ(data.columns[2][1], kMissing);
  EXPECT_TRUE(data.columnUsed[0]);
  EXPECT_FALSE(data.columnUsed[2]);
  EXPECT_EQ(data.status.code, 120012);
  EXPECT_EQ(data.status.severity, 1);
  EXPECT_EQ(data.status.discrete[0], 2);
}

TEST(PlainDataPass, TargetCodeAbove255IsAnErrorWithOneCategoricalVariable) {
  Events events;
  const PreparedData data = prepare(attributeAndTarget(300), {{1, 256}}, events);
  EXPECT_TRUE(data.status.IsError());
  EXPECT_EQ(data.status.code, 120012);
  EXPECT_EQ(data.status.discrete[0], 1);
}

TEST(PlainDataPass, NoUsedCaseIsAnError) {
  VariableList list = attributeAndTarget(2);
  list.AddWeight(weight());
  Events events;
  EXPECT_EQ(prepare(list, {{1, 0, 0.5}, {}}, events).status.code, 120004);
}

TEST(PlainValueTable, SortsStablyWithNaNLast) {
  const VariableList list = attributeAndTarget(4);
  Events events;
  const PreparedData data =
      prepare(list, {{kNaN, 0}, {2, 1}, {0.0, 3}, {-0.0, 2}, {kNaN, 1}, {2, 0}}, events);
  const ValueTable table = supervisedTable(list, data, 0, 1, events);
  ASSERT_EQ(table.rows.size(), 6U);
  EXPECT_EQ(table.rows[0].code, 3);
  EXPECT_EQ(table.rows[1].code, 2);
  EXPECT_EQ(table.rows[2].code, 1);
  EXPECT_EQ(table.rows[3].code, 0);
  EXPECT_EQ(table.rows[4].code, 0);
  EXPECT_EQ(table.rows[5].code, 1);
  EXPECT_EQ(table.distinctValues, 4U);
  EXPECT_EQ(table.targetCategories, 4);
}

TEST(PlainValueTable, MissingTargetCountsInTheTotalWithMissingOnly) {
  const VariableList list = attributeAndTarget(2);
  Events events;
  const PreparedData data = prepare(list, {{1, kMissing}, {2, 1}, {kMissing, 1}}, events);
  const ValueTable table = supervisedTable(list, data, 0, 1, events);
  EXPECT_EQ(table.totalWeight, 1.0);
  EXPECT_EQ(table.totalWeightWithMissing, 3.0);
}

TEST(PlainValueTable, CountPerBinFollowsTheClosedBorder) {
  ValueTable table;
  table.rows = {{5, 0, 1}, {10, 0, 2}};
  Status open;
  EXPECT_EQ(countPerBin(table, {0, 10}, false, open)[0][0], 1.0);
  EXPECT_EQ(open.code, 120002);
  EXPECT_EQ(open.severity, 1);
  Status closed;
  EXPECT_EQ(countPerBin(table, {0, 10}, true, closed)[0][0], 3.0);
  EXPECT_TRUE(closed.IsOK());
  Status short_;
  EXPECT_EQ(countPerBin(table, {0, 7, 20, 30}, true, short_)[1][0], 0.0);
  EXPECT_EQ(short_.code, 120002);
}

TEST(PlainSearch, TwoSingleCasesOfTwoCategoriesAreSplit) {
  for (const bool rightClosed : {true, false}) {
    Events events;
    Settings settings = twentyBins();
    settings.rightClosed = rightClosed;
    SupervisedModel model(attributeAndTarget(2), settings, events);
    EXPECT_TRUE(model.Run({{3, 0}, {8, 1}}, nullptr, nullptr).IsOK());
    const PairRecord& record = model.Records().at(0);
    EXPECT_EQ(record.cutPoints, std::vector<double>({rightClosed ? 3.0 : 8.0}));
    EXPECT_EQ(record.cellCounts, std::vector<std::vector<double>>({{1, 1, 0}, {1, 0, 1}}));
    EXPECT_EQ(record.modelEntropy, 0.0);
  }
}

TEST(PlainSearch, OneCategoryGivesNoCut) {
  Events events;
  SupervisedModel model(attributeAndTarget(2), twentyBins(), events);
  EXPECT_EQ(model.Run({{1, 0}, {2, 0}}, nullptr, nullptr).code, 120018);
  const PairRecord& record = model.Records().at(0);
  EXPECT_EQ(record.status.code, 120016);
  EXPECT_EQ(record.status.discrete[0], 1);
  EXPECT_EQ(record.cellCounts, std::vector<std::vector<double>>({{2, 2}}));
}

TEST(PlainSearch, EarlierOfTwoEqualPositionsIsTaken) {
  // Categories 0 1 0: splits after the first and after the second value are mirror images. A cut
  // value that is no number is never accepted and so tells which of the two was tried.
  Candidates candidates;
  candidates.weights = {{100, 0}, {0, 100}, {100, 0}};
  Events events;
  candidates.cutAfter = {kNaN, 2};
  EXPECT_TRUE(searchCutPoints(candidates, 2, events).cutPoints.empty());
  EXPECT_EQ(events.Of(Event::kEqualEntropies), 1U);
  candidates.cutAfter = {1, kNaN};
  EXPECT_EQ(searchCutPoints(candidates, 2, events).cutPoints, std::vector<double>({1}));
}

TEST(PlainSearch, EntropyOfEvenHalvesIsOneBit) {
  EXPECT_EQ(entropy({4, 2, 2}), 1.0);
  EXPECT_EQ(entropy({0, 0, 0}), 0.0);
  EXPECT_FALSE(std::signbit(entropy({2, 2, 0})));
}

TEST(PlainSmallBins, TieMergesToTheLeft) {
  Bins bins;
  bins.cutPoints = {1, 2};
  bins.counts = {{10, 10, 0}, {2, 1, 1}, {10, 10, 0}};
  Events events;
  mergeSmallBins(bins, 0.5, events);
  EXPECT_EQ(bins.cutPoints, std::vector<double>({2}));
  EXPECT_EQ(bins.counts, std::vector<ClassCounts>({{12, 11, 1}, {10, 10, 0}}));
}

TEST(PlainSmallBins, RightMarkFollowedByLeftMarkFoldsThreeBins) {
  Bins bins;
  bins.cutPoints = {1, 2, 3};
  bins.counts = {{20, 20, 0}, {2, 0, 2}, {3, 0, 3}, {20, 20, 0}};
  Events events;
  mergeSmallBins(bins, 2.0, events);  // up to 1 no two neighbours are small
  EXPECT_EQ(bins.cutPoints, std::vector<double>({3}));
  EXPECT_EQ(bins.counts, std::vector<ClassCounts>({{25, 20, 5}, {20, 20, 0}}));
}

TEST(PlainSupervisedRun, SelectionsAreRefusedAsStated) {
  Events events;
  SupervisedModel model(attributeAndTarget(2), twentyBins(), events);
  const std::vector<Case> cases = {{3, 0}, {8, 1}};
  const std::vector<int> none;
  const std::vector<int> first = {0};
  const std::vector<int> target = {1};
  const std::vector<int> both = {0, 1};
  EXPECT_EQ(model.Run(cases, nullptr, &target).code, 120008);
  EXPECT_EQ(model.Run(cases, &none, nullptr).code, 120008);
  EXPECT_EQ(model.Run(cases, &both, &target).code, 120008);
  EXPECT_EQ(model.Run(cases, &target, &target).code, 120008);
  EXPECT_TRUE(model.Run(cases, &first, &target).IsOK());
  const std::vector<int> outside = {9};
  EXPECT_EQ(model.Run({}, &outside, nullptr).code, 120018);
  EXPECT_EQ(model.Records().back().status.code, 120011);
  EXPECT_EQ(model.Records().back().target, 1);
}

TEST(PlainEqualFrequencyRun, WeightIsNeverBinned) {
  VariableList list;
  list.AddScale(variable("x", kAttributeRole));
  list.AddWeight(weight());
  Events events;
  EqualFrequencyModel model(list, twentyBins(), events);
  EXPECT_TRUE(model.Run({{1, 1}, {2, 3}}, nullptr).IsOK());
  EXPECT_EQ(model.Records().size(), 1U);
  const std::vector<int> weight = {1};
  EXPECT_EQ(model.Run({}, &weight).code, 120011);
}

}  // namespace
}  // namespace plain_model
