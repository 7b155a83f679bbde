#include "rounds/answer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace MCBinning {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Two classes; borders 1 and 2, the values between 4 and 6.
BINAttributeQuestion question() {
  BINAttributeQuestion asked;
  asked.borders = {1.0, 2.0};
  asked.ranges = {{4.0, 5.0}, {5.0, 6.0}};
  return asked;
}

BINAttributeAnswer answer() {
  BINAttributeAnswer given;
  given.cellWeights = {1, 0, 2, 0, 0, 3, 0, 0, 4, 5};
  given.missingWeights = {1, 1};
  given.userMissingWeights = {0, 1};
  given.minimum = 0.0;
  given.maximum = 9.0;
  given.values = {{5.5, 1, 2}, {4.5, 0, 1}, {5.5, 1, 1}, {5.5, 0, 1}};
  return given;
}

bool fits(const BINAttributeAnswer& given, const BINAttributeQuestion& asked = question()) {
  return AttributeAnswer::Read(asked, given, 2).has_value();
}

TEST(AnswerTest, MergedWeightsAscendByValueAndCode) {
  std::vector<BINValueWeight> weights = {{0.0, 0, 1}, {5.5, 1, 2}, {-0.0, 0, 4}, {5.5, 0, 1}};
  mergeValueWeights(weights);
  ASSERT_EQ(weights.size(), 3U);
  EXPECT_EQ(weights[0].weight, 5.0);
  EXPECT_FALSE(std::signbit(weights[0].value));
  EXPECT_EQ(weights[1].code, 0);
  EXPECT_EQ(weights[2].weight, 2.0);
}

TEST(AnswerTest, WeightIsWholeFromZeroToBelowTwoToThe53) {
  EXPECT_TRUE(isWholeWeight(0.0));
  EXPECT_TRUE(isWholeWeight(0x1p53 - 1.0));
  EXPECT_FALSE(isWholeWeight(0x1p53));
  EXPECT_FALSE(isWholeWeight(-1.0));
  EXPECT_FALSE(isWholeWeight(0.5));
  EXPECT_FALSE(isWholeWeight(kNaN));
}

TEST(AnswerTest, AddsUpCellsAndMissingWeights) {
  const auto asked = question();
  const auto given = answer();
  const auto read = AttributeAnswer::Read(asked, given, 2);
  ASSERT_TRUE(read);
  EXPECT_FALSE(read->AddsUpTo({8, 11}));
  EXPECT_TRUE(read->AddsUpTo({8, 10}));
}

TEST(AnswerTest, WhatDoesNotFitTheQuestionIsRefused) {
  EXPECT_TRUE(fits(answer()));
  std::vector<BINAttributeAnswer> unfit(12, answer());
  unfit[0].cellWeights.pop_back();
  unfit[1].cellWeights[0] = 0.5;
  unfit[2].missingWeights = {1};
  unfit[3].missingWeights[0] = -1;
  unfit[4].userMissingWeights = {};
  unfit[5].userMissingWeights[1] = kNaN;
  unfit[6].values[0].value = kNaN;
  unfit[7].values[0].code = 2;
  unfit[8].values[0].code = -1;
  unfit[9].values[0].weight = 0.0;
  unfit[10].values[0].weight = 1.5;
  unfit[11].distinctValues = 0.5;
  for (const BINAttributeAnswer& given : unfit) {
    EXPECT_FALSE(fits(given)) << &given - unfit.data();
  }
}

TEST(AnswerTest, ValuesOutsideTheRangesAreRefused) {
  for (const double value : {3.0, 4.0, 5.0, 6.0, 7.0}) {
    BINAttributeAnswer given = answer();
    given.values.push_back({value, 0, 1});
    EXPECT_FALSE(fits(given)) << value;
  }
}

TEST(AnswerTest, WeightWhereNoNumberCanBeIsRefused) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  BINAttributeQuestion asked;
  BINAttributeAnswer given;
  given.missingWeights = {0, 0};
  given.userMissingWeights = {0, 0};
  given.cellWeights = {1, 0};
  EXPECT_TRUE(fits(given, asked));
  asked.borders = {-kInfinity, 1.0, std::nextafter(1.0, 2.0), kInfinity};
  for (std::size_t cell = 0; cell < 9; ++cell) {
    given.cellWeights.assign(18, 0.0);
    given.cellWeights[2 * cell + 1] = 1.0;
    EXPECT_EQ(fits(given, asked), cell != 0 && cell != 4 && cell != 8) << cell;
  }
}

TEST(AnswerTest, AllPiecesAreThoseWithinTheOuterBorders) {
  const auto asked = question();
  const auto given = answer();
  const PieceTable pieces = AttributeAnswer::Read(asked, given, 2)->AllPieces();
  ASSERT_EQ(pieces.Size(), 2U);
  EXPECT_EQ(pieces[0].low, 1.0);
  EXPECT_FALSE(pieces[0].IsStretch());
  EXPECT_EQ(pieces[1].high, 2.0);
  EXPECT_EQ(pieces.Count(2), (ClassCounts{5, 2, 3}));
}

PieceTable wishes() {
  PieceTable pieces;
  pieces.Append(0.5, 0.5, std::vector<ClassWeight>{{0, 7}});
  pieces.Append(1.0, 2.0, std::vector<ClassWeight>{{1, 3}});
  pieces.Append(4.0, 5.0, std::vector<ClassWeight>{{0, 1}});
  pieces.Append(5.0, 6.0, std::vector<ClassWeight>{{0, 1}, {1, 3}});
  pieces.WishParts(1, 2);
  pieces.WishValues(2);
  pieces.WishValues(3);
  return pieces;
}

TEST(AnswerTest, WishesAreReplacedByWhatWasAnswered) {
  const auto asked = question();
  const auto given = answer();
  const auto fulfilled = AttributeAnswer::Read(asked, given, 2)->Fulfil(wishes());
  ASSERT_TRUE(fulfilled);
  ASSERT_EQ(fulfilled->Size(), 4U);
  EXPECT_EQ((*fulfilled)[0].low, 0.5);
  EXPECT_TRUE((*fulfilled)[1].IsStretch());
  EXPECT_EQ((*fulfilled)[2].low, 4.5);
  EXPECT_EQ((*fulfilled)[3].high, 5.5);
  EXPECT_EQ(fulfilled->ClassWeights(3).size(), 2U);
  EXPECT_EQ(fulfilled->WishedWeight(), 0.0);
  EXPECT_EQ(fulfilled->Count(2), (ClassCounts{15, 9, 6}));
}

TEST(AnswerTest, OtherWeightsThanBeforeAreNoticed) {
  const auto asked = question();
  BINAttributeAnswer given = answer();
  given.cellWeights[4] = 1;
  EXPECT_FALSE(AttributeAnswer::Read(asked, given, 2)->Fulfil(wishes()));
  given = answer();
  given.values[0].code = 0;
  EXPECT_FALSE(AttributeAnswer::Read(asked, given, 2)->Fulfil(wishes()));
  given = answer();
  given.values.pop_back();
  EXPECT_FALSE(AttributeAnswer::Read(asked, given, 2)->Fulfil(wishes()));
}

}  // namespace
}  // namespace MCBinning
