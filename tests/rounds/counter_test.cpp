#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "mcbinning/rounds.h"
#include "mcbinning/user_missing.h"
#include "random/random_runs.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

void expectError(const MCBinning::MCStatus& status, long code) {
  EXPECT_TRUE(status.IsError());
  EXPECT_EQ(status.GetErrorCode(), code);
}

BINRoundQuestion oneQuestion(std::vector<double> borders, std::vector<BINValueRange> ranges = {}) {
  BINAttributeQuestion asked;
  asked.borders = std::move(borders);
  asked.ranges = std::move(ranges);
  return {{asked}};
}

/// Cases of one attribute, two classes and weights.
struct Cases {
  std::vector<double> values;
  std::vector<int> codes;
  std::vector<double> weights;
  BINNumericUserMissing userMissing;

  BINRoundCases Borrowed() const {
    return {values.size(), codes.data(), weights.data(), {values.data()}, {&userMissing}};
  }
};

BINRoundAnswer answerOf(const Cases& cases, const BINRoundQuestion& question) {
  BINRoundCounter counter;
  BINRoundAnswer answer;
  EXPECT_TRUE(counter.Prepare(question, 2).IsOK());
  EXPECT_TRUE(counter.Count(cases.Borrowed(), answer).IsOK());
  return answer;
}

TEST(CounterTest, WeightsAreCountedPerCellAndClass) {
  const Cases cases = {
      {0.5, 1.0, 1.5, 2.0, 2.5, 1.0}, {0, 0, 1, 1, 0, 1}, {1, 2, 4, 8, 16, 32}, {}};
  const BINRoundAnswer answer = answerOf(cases, oneQuestion({1.0, 2.0}));
  EXPECT_EQ(answer.attributes[0].cellWeights,
            (std::vector<double>{1, 0, 2, 32, 0, 4, 0, 8, 16, 0}));
  EXPECT_EQ(answer.cases, 6.0);
  EXPECT_EQ(answer.classWeights, (std::vector<double>{19, 44}));
  EXPECT_EQ(answer.missingTargetWeight, 0.0);
  EXPECT_EQ(answer.attributes[0].minimum, 0.5);
  EXPECT_EQ(answer.attributes[0].maximum, 2.5);
}

TEST(CounterTest, MissingAndDeclaredMissingWeightsAreApart) {
  Cases cases = {
      {kNaN, MCMV::gMissingValue, 7.0, 1.0, -0.0}, {0, 1, 1, -1, 0}, {1, 2, 4, 8, 16}, {}};
  cases.userMissing.AddValue(7.0, "");
  const BINRoundAnswer answer = answerOf(cases, oneQuestion({0.0}));
  const BINAttributeAnswer& attribute = answer.attributes[0];
  EXPECT_EQ(attribute.missingWeights, (std::vector<double>{1, 2}));
  EXPECT_EQ(attribute.userMissingWeights, (std::vector<double>{0, 4}));
  EXPECT_EQ(attribute.cellWeights, (std::vector<double>{0, 0, 16, 0, 0, 0}));
  EXPECT_EQ(answer.missingTargetWeight, 8.0);
  EXPECT_EQ(answer.cases, 5.0);
  EXPECT_FALSE(std::signbit(attribute.minimum));
}

TEST(CounterTest, CaseWithoutAPositiveFiniteWeightIsDropped) {
  const Cases cases = {
      {1, 2, 3, 4, 5}, {0, 0, 0, 0, 0}, {0.0, -3.0, kNaN, kInfinity, MCMV::gMissingValue}, {}};
  const BINRoundAnswer answer = answerOf(cases, oneQuestion({}));
  EXPECT_EQ(answer.cases, 0.0);
  EXPECT_EQ(answer.classWeights, (std::vector<double>{0, 0}));
  EXPECT_EQ(answer.attributes[0].minimum, kInfinity);
  EXPECT_EQ(answer.attributes[0].maximum, -kInfinity);
}

TEST(CounterTest, WithoutCodesAndWeightsEveryCaseIsOneOfTheFirstClass) {
  const std::vector<double> values = {1, 2};
  BINRoundCounter counter;
  BINRoundAnswer answer;
  ASSERT_TRUE(counter.Prepare(oneQuestion({}), 1).IsOK());
  ASSERT_TRUE(counter.Count({2, nullptr, nullptr, {values.data()}, {}}, answer).IsOK());
  EXPECT_EQ(answer.attributes[0].cellWeights, (std::vector<double>{2}));
}

TEST(CounterTest, ValuesAreThoseStrictlyInsideTheRanges) {
  const Cases cases = {
      {1.0, 1.5, 2.0, 2.5, 3.0, 4.5, 5.0}, std::vector<int>(7, 1), std::vector<double>(7, 1.0), {}};
  const BINRoundAnswer answer =
      answerOf(cases, oneQuestion({}, {{1.0, 2.0}, {2.0, 3.0}, {4.0, kInfinity}}));
  std::vector<double> values;
  for (const BINValueWeight& entry : answer.attributes[0].values) {
    values.push_back(entry.value);
  }
  std::sort(values.begin(), values.end());
  EXPECT_EQ(values, (std::vector<double>{1.5, 2.5, 4.5, 5.0}));
}

TEST(CounterTest, ValuesThatOccurOftenTakeLittleRoom) {
  Cases cases;
  for (int i = 0; i < 1000; ++i) {
    cases.values.push_back(i % 3);
    cases.codes.push_back(0);
    cases.weights.push_back(2.0);
  }
  BINRoundAnswer sum;
  for (int part = 0; part < 50; ++part) {
    const BINRoundAnswer answer = answerOf(cases, oneQuestion({}, {{-1.0, 5.0}}));
    EXPECT_LE(answer.attributes[0].values.size(), 3U);
    ASSERT_TRUE(BINRoundCounter::Add(answer, sum).IsOK());
    EXPECT_LE(sum.attributes[0].values.size(), 6U);
  }
  double weight = 0.0;
  for (const BINValueWeight& entry : sum.attributes[0].values) {
    weight += entry.weight;
  }
  EXPECT_EQ(weight, 100000.0);
}

TEST(CounterTest, AttributesAreFoundByTheirPlaceInThePlan) {
  BINRoundQuestion question = oneQuestion({});
  question.attributes[0].attribute = 2;
  const std::vector<double> values = {1, 2};
  BINRoundCounter counter;
  BINRoundAnswer answer;
  ASSERT_TRUE(counter.Prepare(question, 1).IsOK());
  ASSERT_TRUE(
      counter.Count({2, nullptr, nullptr, {nullptr, nullptr, values.data()}, {}}, answer).IsOK());
  EXPECT_EQ(answer.attributes[0].maximum, 2.0);
  expectError(counter.Count({2, nullptr, nullptr, {values.data()}, {}}, answer), 120024);
  expectError(counter.Count({2, nullptr, nullptr, {values.data(), nullptr, nullptr}, {}}, answer),
              120024);
}

TEST(CounterTest, QuestionsThatDoNotAscendAreRefused) {
  BINRoundCounter counter;
  for (const std::vector<double>& borders :
       {std::vector<double>{1, 1}, std::vector<double>{2, 1}, std::vector<double>{1, kNaN},
        std::vector<double>{kNaN}, std::vector<double>{0.0, -0.0}}) {
    expectError(counter.Prepare(oneQuestion(borders), 2), 120024);
  }
  for (const std::vector<BINValueRange>& ranges :
       {std::vector<BINValueRange>{{1, 1}}, std::vector<BINValueRange>{{1, 3}, {2, 4}},
        std::vector<BINValueRange>{{3, 4}, {1, 2}}, std::vector<BINValueRange>{{kNaN, 4}}}) {
    expectError(counter.Prepare(oneQuestion({}, ranges), 2), 120024);
  }
  expectError(counter.Prepare(oneQuestion({}), 0), 120010);
  expectError(counter.Prepare(oneQuestion({}), 257), 120010);
  EXPECT_TRUE(counter.Prepare(oneQuestion({}), 256).IsOK());
}

TEST(CounterTest, RefusedQuestionIsNotAnsweredByTheOneBefore) {
  const Cases cases;
  BINRoundCounter counter;
  BINRoundAnswer answer;
  ASSERT_TRUE(counter.Prepare(oneQuestion({}), 2).IsOK());
  EXPECT_TRUE(counter.Count(cases.Borrowed(), answer).IsOK());
  EXPECT_TRUE(counter.Prepare(oneQuestion({}), 0).IsError());
  expectError(counter.Count(cases.Borrowed(), answer), 120024);
}

TEST(CounterTest, WhatCannotBeCountedIsRefused) {
  BINRoundCounter counter;
  BINRoundAnswer answer;
  Cases cases = {{1.0}, {0}, {1.0}, {}};
  expectError(counter.Count(cases.Borrowed(), answer), 120024);
  ASSERT_TRUE(counter.Prepare(oneQuestion({}), 2).IsOK());
  cases.weights = {1.5};
  expectError(counter.Count(cases.Borrowed(), answer), 120025);
  cases.weights = {1.0};
  cases.codes = {2};
  expectError(counter.Count(cases.Borrowed(), answer), 120012);
}

TEST(CounterTest, AnswersThatDoNotFitEachOtherAreNotAdded) {
  const Cases cases = {{1.0}, {0}, {1.0}, {}};
  BINRoundAnswer answer = answerOf(cases, oneQuestion({}));
  expectError(BINRoundCounter::Add(answerOf(cases, oneQuestion({5.0})), answer), 120024);
  BINRoundAnswer part = answerOf(cases, oneQuestion({}));
  part.classWeights.pop_back();
  expectError(BINRoundCounter::Add(part, answer), 120024);
  part = answerOf(cases, oneQuestion({}));
  part.attributes.clear();
  expectError(BINRoundCounter::Add(part, answer), 120024);
  for (auto weights :
       {&BINAttributeAnswer::missingWeights, &BINAttributeAnswer::userMissingWeights}) {
    part = answerOf(cases, oneQuestion({}));
    (part.attributes[0].*weights).push_back(0.0);
    expectError(BINRoundCounter::Add(part, answer), 120024);
  }
}

TEST(CounterTest, AnswerCanBeAddedToItself) {
  const Cases cases = {{1.0, 2.0}, {0, 1}, {1.0, 4.0}, {}};
  BINRoundAnswer answer = answerOf(cases, oneQuestion({1.5}, {{0.0, 9.0}}));
  ASSERT_TRUE(BINRoundCounter::Add(answer, answer).IsOK());
  EXPECT_EQ(answer.cases, 4.0);
  EXPECT_EQ(answer.attributes[0].cellWeights, (std::vector<double>{2, 0, 0, 0, 0, 8}));
}

/// Every cell by its definition.
TEST(CounterTest, CountsAreThoseOfEachCellsDefinition) {
  mcbinning_tests::forRandomRuns(300, [](mcbinning_tests::Choices& choices) {
    std::vector<double> borders;
    for (int i = choices.Below(30); i > 0; --i) {
      const double border = choices.Number() + 0.0;
      if (border == border) {
        borders.push_back(border);
      }
    }
    std::sort(borders.begin(), borders.end());
    borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
    Cases cases;
    for (int i = choices.Below(200); i > 0; --i) {
      cases.values.push_back(!borders.empty() && choices.Flag() ? choices.Pick(borders)
                                                                : choices.Number());
      cases.codes.push_back(choices.Below(2));
      cases.weights.push_back(choices.Between(1, 9));
    }
    std::vector<double> expected(2 * (2 * borders.size() + 1), 0.0);
    for (std::size_t i = 0; i < cases.values.size(); ++i) {
      const double value = cases.values[i];
      if (value != value || value == MCMV::gMissingValue) {
        continue;
      }
      std::size_t cell = 0;
      for (const double border : borders) {
        cell += border < value ? 2 : border == value ? 1 : 0;
      }
      expected[2 * cell + static_cast<std::size_t>(cases.codes[i])] += cases.weights[i];
    }
    EXPECT_EQ(answerOf(cases, oneQuestion(borders)).attributes[0].cellWeights, expected);
  });
}

}  // namespace
