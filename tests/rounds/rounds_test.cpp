#include "mcbinning/rounds.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "rounds/make_believe_engine.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

const double kNaN = std::numeric_limits<double>::quiet_NaN();

void expectError(const MCStatus& status, long code, int datum = 0) {
  EXPECT_TRUE(status.IsError());
  EXPECT_EQ(status.GetErrorCode(), code);
  EXPECT_EQ(status.GetDiscreteDatum(0), datum);
}

BINSettings supervisedSettings() {
  BINSettings settings;
  settings.SetNumberOfBins(10);
  return settings;
}

EFBINSettings equalFrequencySettings() {
  EFBINSettings settings;
  settings.SetNumberOfBins(4);
  return settings;
}

/// One attribute, called 3, of the numbers 0 to 99, the upper half of class 1; target 7.
struct Hundred {
  Hundred() {
    data.columns.resize(1);
    for (int i = 0; i < 100; ++i) {
      data.columns[0].push_back(i);
      data.codes.push_back(i < 50 ? 0 : 1);
    }
    data.userMissing.resize(1);
    data.categories = 2;
    plan.attributes = {{3, {}}};
    plan.target = 7;
    plan.categories = 2;
    plan.mostFetched = 10;
  }

  BINRoundAnswer AnswerTo(const BINRoundQuestion& question) const {
    const MakeBelieveEngine engine(data, std::vector<std::size_t>(data.Size(), 0), {0});
    BINRoundAnswer answer;
    EXPECT_TRUE(engine.Ask(question, answer).IsOK());
    return answer;
  }

  /// Starts a run and takes the first answer.
  void Begin(BINRounds& rounds) const {
    ASSERT_TRUE(rounds.Start(supervisedSettings(), plan).IsOK());
    ASSERT_TRUE(rounds.Answer(AnswerTo(rounds.GetQuestion())).IsOK());
    ASSERT_FALSE(rounds.IsFinished());
  }

  MCStatus Run(BINRounds& rounds, const BINSettings& settings = supervisedSettings()) const {
    MCStatus status = rounds.Start(settings, plan);
    while (!status.IsError() && !rounds.IsFinished()) {
      status = rounds.Answer(AnswerTo(rounds.GetQuestion()));
    }
    return status;
  }

  RoundsData data;
  BINRoundsPlan plan;
};

BINAttributeTargetResults onlyRecord(const BINRounds& rounds) {
  std::vector<BINAttributeTargetResults> records;
  rounds.GetOutput().GetAllCutPoints(records);
  EXPECT_EQ(records.size(), 1U);
  return records.empty() ? BINAttributeTargetResults() : records[0];
}

TEST(RoundsTest, RunEndsWithTheRecordsOfTheOrdinaryRun) {
  BINRounds rounds;
  EXPECT_TRUE(Hundred().Run(rounds).IsOK());
  EXPECT_TRUE(rounds.IsFinished());
  EXPECT_TRUE(rounds.GetQuestion().attributes.empty());
  const BINAttributeTargetResults record = onlyRecord(rounds);
  EXPECT_EQ(record.GetAttributeIndex(), 3);
  EXPECT_EQ(record.GetTargetIndex(), 7);
  EXPECT_EQ(record.GetCutPoints(), std::vector<double>{49.0});
  EXPECT_EQ(record.GetNDistinctValues(), 100U);
  std::vector<BINAttributeResults> none;
  EXPECT_TRUE(rounds.GetEFOutput().GetAllCutPoints(none).IsError());
}

TEST(RoundsTest, AsMuchAsThePlanAllowsIsFetchedAtOnce) {
  Hundred hundred;
  BINRounds rounds;
  hundred.plan.mostFetched = 100;
  hundred.Begin(rounds);
  EXPECT_EQ(rounds.GetQuestion().attributes[0].ranges.size(), 1U);
  EXPECT_TRUE(rounds.GetQuestion().attributes[0].borders.empty());
  hundred.plan.mostFetched = 99;
  hundred.Begin(rounds);
  EXPECT_TRUE(rounds.GetQuestion().attributes[0].ranges.empty());
}

TEST(RoundsTest, EqualFrequencyReadsNoTarget) {
  Hundred hundred;
  hundred.data.codes.clear();
  hundred.data.categories = 1;
  hundred.plan.target = -1;
  hundred.plan.categories = 0;
  BINRounds rounds;
  MCStatus status = rounds.Start(equalFrequencySettings(), hundred.plan);
  while (!status.IsError() && !rounds.IsFinished()) {
    status = rounds.Answer(hundred.AnswerTo(rounds.GetQuestion()));
  }
  EXPECT_TRUE(status.IsOK());
  std::vector<BINAttributeResults> records;
  ASSERT_TRUE(rounds.GetEFOutput().GetAllCutPoints(records).IsOK());
  EXPECT_EQ(records[0].GetCutPoints(), (std::vector<double>{24.5, 49.5, 74.5}));
  EXPECT_EQ(records[0].GetCellCounts(), (std::vector<double>{25, 25, 25, 25}));
}

TEST(RoundsTest, WithoutDistinctValuesThereAreNoPreBins) {
  Hundred hundred;
  BINSettings settings = supervisedSettings();
  settings.SetNumDistinctValueThreshold(20);
  BINRounds rounds;
  EXPECT_TRUE(hundred.Run(rounds, settings).IsOK());
  EXPECT_EQ(onlyRecord(rounds).GetCutPoints(), std::vector<double>{49.5});  // of two pre-bins
  hundred.plan.countDistinct = false;
  EXPECT_TRUE(hundred.Run(rounds, settings).IsOK());
  EXPECT_EQ(onlyRecord(rounds).GetCutPoints(), std::vector<double>{49.0});
  EXPECT_EQ(onlyRecord(rounds).GetNDistinctValues(), 0U);
}

TEST(RoundsTest, MoreDistinctValuesThanARecordHoldsAreShownAsTheMost) {
  const Hundred hundred;
  BINRounds rounds;
  ASSERT_TRUE(rounds.Start(supervisedSettings(), hundred.plan).IsOK());
  BINRoundAnswer answer = hundred.AnswerTo(rounds.GetQuestion());
  answer.attributes[0].distinctValues = 5e9;
  MCStatus status = rounds.Answer(answer);
  while (!rounds.IsFinished()) {
    status = rounds.Answer(hundred.AnswerTo(rounds.GetQuestion()));
  }
  EXPECT_EQ(onlyRecord(rounds).GetNDistinctValues(), 4294967295U);
}

TEST(RoundsTest, WarningTellsOfARecordThatIsNotOK) {
  Hundred hundred;
  std::fill(hundred.data.columns[0].begin(), hundred.data.columns[0].end(), 4.0);
  BINRounds rounds;
  const MCStatus status = hundred.Run(rounds);
  EXPECT_TRUE(status.IsWarning());
  EXPECT_EQ(status.GetErrorCode(), 120018);
  EXPECT_EQ(onlyRecord(rounds).GetStatus().GetErrorCode(), 120014);
  EXPECT_EQ(onlyRecord(rounds).GetStatus().GetDiscreteDatum(0), 3);
}

TEST(RoundsTest, UnusablePlansAreRefused) {
  const Hundred hundred;
  BINRounds rounds;
  std::vector<BINRoundsPlan> unusable(8, hundred.plan);
  unusable[0].attributes.clear();
  unusable[1].attributes[0].index = -1;
  unusable[2].attributes[0].index = 7;
  unusable[3].attributes.push_back({3, {}});
  unusable[4].attributes[0].firstBorders = {kNaN};
  unusable[5].target = -1;
  unusable[6].mostFetched = 0.0;
  unusable[7].mostBorders = 0;
  for (const BINRoundsPlan& plan : unusable) {
    expectError(rounds.Start(supervisedSettings(), plan), 120008);
    EXPECT_FALSE(rounds.IsFinished());
    EXPECT_TRUE(rounds.GetQuestion().attributes.empty());
  }
  expectError(rounds.Start(BINSettings(), hundred.plan), 120009);
  expectError(rounds.Start(EFBINSettings(), hundred.plan), 120009);
  for (const int categories : {0, 257}) {
    BINRoundsPlan plan = hundred.plan;
    plan.categories = categories;
    expectError(rounds.Start(supervisedSettings(), plan), 120010);
  }
}

TEST(RoundsTest, WithoutAQuestionNoAnswerIsTaken) {
  BINRounds rounds;
  EXPECT_FALSE(rounds.IsFinished());
  EXPECT_EQ(rounds.GetProgress().rounds, 0U);
  expectError(rounds.Answer(BINRoundAnswer()), 120008);
  EXPECT_TRUE(Hundred().Run(rounds).IsOK());
  expectError(rounds.Answer(BINRoundAnswer()), 120008);
  EXPECT_TRUE(rounds.IsFinished());
}

TEST(RoundsTest, NoCaseIsAnError) {
  Hundred hundred;
  hundred.data.weights.assign(100, 0.0);
  BINRounds rounds;
  expectError(hundred.Run(rounds), 120004);
  EXPECT_FALSE(rounds.IsFinished());
}

TEST(RoundsTest, WeightOfTwoToThe53OrMoreIsRefused) {
  Hundred hundred;
  hundred.data.weights.assign(100, 1.0);
  hundred.data.weights[0] = 0x1p53 - 100.0;
  BINRounds rounds;
  EXPECT_TRUE(hundred.Run(rounds).IsOK());
  EXPECT_EQ(onlyRecord(rounds).GetTotalWeight(), 0x1p53 - 1.0);
  hundred.data.weights[0] += 1.0;
  expectError(hundred.Run(rounds), 120023, -1);
}

/// Answers the second question with changed data.
MCStatus answerChanged(void (*change)(BINRoundAnswer&)) {
  const Hundred hundred;
  BINRounds rounds;
  hundred.Begin(rounds);
  BINRoundAnswer answer = hundred.AnswerTo(rounds.GetQuestion());
  change(answer);
  const MCStatus status = rounds.Answer(answer);
  EXPECT_FALSE(rounds.IsFinished());
  EXPECT_TRUE(rounds.GetQuestion().attributes.empty());
  expectError(rounds.Answer(answer), 120008);
  return status;
}

TEST(RoundsTest, DataThatChangeEndTheRun) {
  expectError(answerChanged([](BINRoundAnswer& a) { a.cases -= 1.0; }), 120022, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.classWeights = {51, 49}; }), 120022, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.missingTargetWeight = 1.0; }), 120022, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.attributes[0].minimum = -1.0; }), 120022, 3);
  expectError(answerChanged([](BINRoundAnswer& a) { a.attributes[0].maximum = 98.0; }), 120022, 3);
  expectError(answerChanged([](BINRoundAnswer& a) { a.attributes[0].missingWeights[0] = 1; }),
              120022, 3);
  // A case has moved to another cell.
  expectError(answerChanged([](BINRoundAnswer& a) {
                auto& weights = a.attributes[0].cellWeights;
                const std::size_t last = weights.size() - 2;
                for (std::size_t i = 0; i < last; i += 2) {
                  if (weights[i] > 0.0) {
                    weights[i] -= 1.0;
                    weights[last] += 1.0;
                    return;
                  }
                }
              }),
              120022, 3);
}

TEST(RoundsTest, AnswersThatDoNotFitEndTheRun) {
  expectError(answerChanged([](BINRoundAnswer& a) { a.attributes.clear(); }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.classWeights.push_back(0.0); }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.classWeights[0] = -1.0; }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.missingTargetWeight = 0.5; }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.cases = 0.5; }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.cases = 101.0; }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.cases = 0.0; }), 120024, -1);
  expectError(answerChanged([](BINRoundAnswer& a) { a.attributes[0].cellWeights.clear(); }), 120024,
              3);
}

TEST(RoundsTest, ExtremesThatTheCountsContradictEndTheRun) {
  const Hundred hundred;
  const double kInfinity = std::numeric_limits<double>::infinity();
  for (const BINValueRange extremes : {BINValueRange{5.0, 4.0}, BINValueRange{-kInfinity, 4.0},
                                       BINValueRange{1.0, kInfinity}, BINValueRange{kNaN, 4.0}}) {
    BINRounds rounds;
    ASSERT_TRUE(rounds.Start(supervisedSettings(), hundred.plan).IsOK());
    BINRoundAnswer answer = hundred.AnswerTo(rounds.GetQuestion());
    answer.attributes[0].minimum = extremes.low;
    answer.attributes[0].maximum = extremes.high;
    expectError(rounds.Answer(answer), 120022, 3);
  }
}

TEST(RoundsTest, OneExtremeOfNoValueEndsTheRun) {
  Hundred hundred;
  hundred.data.columns[0].assign(100, kNaN);
  BINRounds rounds;
  ASSERT_TRUE(rounds.Start(supervisedSettings(), hundred.plan).IsOK());
  BINRoundAnswer answer = hundred.AnswerTo(rounds.GetQuestion());
  answer.attributes[0].minimum = 5.0;
  answer.attributes[0].maximum = 5.0;
  expectError(rounds.Answer(answer), 120022, 3);
}

TEST(RoundsTest, ProgressTellsWhatIsLeft) {
  Hundred hundred;
  hundred.data.columns.push_back(std::vector<double>(100, 4.0));
  hundred.data.userMissing.resize(2);
  hundred.plan.attributes.push_back({4, {4.0}});
  BINRounds rounds;
  hundred.Begin(rounds);
  BINRoundsProgress progress = rounds.GetProgress();
  EXPECT_EQ(progress.rounds, 1U);
  EXPECT_EQ(progress.attributesLeft, 1U);
  EXPECT_EQ(progress.weightLeft, 100.0);
  EXPECT_EQ(progress.weightsReceived, 2.0 * (7.0 + 9.0));
  EXPECT_EQ(progress.valuesReceived, 0.0);
  while (!rounds.IsFinished()) {
    rounds.Answer(hundred.AnswerTo(rounds.GetQuestion()));
  }
  progress = rounds.GetProgress();
  EXPECT_EQ(progress.attributesLeft, 0U);
  EXPECT_EQ(progress.weightLeft, 0.0);
  EXPECT_GT(progress.weightsReceived, 32.0);
}

TEST(RoundsTest, StartDropsAnEarlierRun) {
  const Hundred hundred;
  BINRounds rounds;
  EXPECT_TRUE(hundred.Run(rounds).IsOK());
  EXPECT_TRUE(rounds.Start(supervisedSettings(), hundred.plan).IsOK());
  EXPECT_FALSE(rounds.IsFinished());
  EXPECT_EQ(rounds.GetProgress().rounds, 0U);
  std::vector<BINAttributeTargetResults> none;
  EXPECT_TRUE(rounds.GetOutput().GetAllCutPoints(none).IsError());
}

}  // namespace
}  // namespace mcbinning_tests
