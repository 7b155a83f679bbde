#include "rounds/question.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kDenorm = std::numeric_limits<double>::denorm_min();

PieceTable stretch(double low, double high, double weight) {
  PieceTable pieces;
  pieces.Append(low, high, std::vector<ClassWeight>{{0, weight}});
  return pieces;
}

/// The borders between the ends of a stretch.
std::vector<double> innerBorders(double low, double high, std::size_t parts) {
  PieceTable pieces = stretch(low, high, 1e9);
  pieces.WishParts(0, parts);
  BINAttributeQuestion question;
  askWishes(pieces, question);
  EXPECT_TRUE(std::is_sorted(question.borders.begin(), question.borders.end()));
  EXPECT_EQ(std::adjacent_find(question.borders.begin(), question.borders.end()),
            question.borders.end());
  EXPECT_EQ(question.borders.front(), low);
  EXPECT_EQ(question.borders.back(), high);
  return {question.borders.begin() + 1, question.borders.end() - 1};
}

TEST(QuestionTest, FirstQuestionSetsInfinitiesAndTheGreatestNumberApart) {
  BINAttributeQuestion question;
  askFirst({3.0, -0.0, 1.0, 3.0, kInfinity}, question);
  EXPECT_EQ(question.borders, (std::vector<double>{-kInfinity, 0.0, 1.0, 3.0, kMax, kInfinity}));
  EXPECT_FALSE(std::signbit(question.borders[1]));
}

TEST(QuestionTest, PartsFillAStretchWithBordersOfBothKinds) {
  const std::vector<double> borders = innerBorders(1.0, 1e6, 64);
  EXPECT_GE(borders.size(), 40U);
  EXPECT_LE(borders.size(), 64U);
  EXPECT_GT(std::count_if(borders.begin(), borders.end(), [](double b) { return b < 1e3; }), 10);
  EXPECT_GT(std::count_if(borders.begin(), borders.end(), [](double b) { return b > 5e5; }), 10);
}

TEST(QuestionTest, NoMorePartsThanWishedAreAskedFor) {
  EXPECT_LE(innerBorders(1.0, 1e6, 2).size(), 2U);
  EXPECT_LE(innerBorders(1.0, 1e6, 8).size(), 6U);
}

TEST(QuestionTest, WholeNumbersAreBordersWhereThereIsOneForEach) {
  const std::vector<double> borders = innerBorders(-20.0, 21.0, 256);
  for (double number = -19.0; number < 21.0; ++number) {
    EXPECT_TRUE(std::binary_search(borders.begin(), borders.end(), number)) << number;
  }
}

TEST(QuestionTest, FewNumbersAreAllBorders) {
  const double next = std::nextafter(1.0, 2.0);
  const double afterNext = std::nextafter(next, 2.0);
  EXPECT_EQ(innerBorders(1.0, std::nextafter(afterNext, 2.0), 4),
            (std::vector<double>{next, afterNext}));
  EXPECT_EQ(innerBorders(-kDenorm, kDenorm, 4), (std::vector<double>{0.0}));
}

TEST(QuestionTest, AnyStretchIsCutDownToItsNumbersWithinTenRounds) {
  const std::vector<BINValueRange> stretches = {
      {-kInfinity, kInfinity}, {-kMax, kMax}, {0.0, 1.0}, {-1.0, 0.0}, {-1e-300, 1e-300}, {5, 1e9}};
  for (const BINValueRange& whole : stretches) {
    for (const double value : {whole.low + (whole.high > 0 ? kDenorm : -kDenorm), 0.3, 7.0, -0.7,
                               1e-310, -1e-310, 123456.789}) {
      if (!(whole.low < value && value < whole.high)) {
        continue;
      }
      BINValueRange around = whole;
      int rounds = 0;
      while (around.low < around.high && rounds < 20) {
        const std::vector<double> borders = innerBorders(around.low, around.high, 256);
        for (const double border : borders) {
          around.low = border <= value ? std::max(around.low, border) : around.low;
          around.high = border >= value ? std::min(around.high, border) : around.high;
        }
        ++rounds;
      }
      EXPECT_LE(rounds, 10) << whole.low << ' ' << whole.high << ' ' << value;
    }
  }
}

TEST(QuestionTest, StretchesSideBySideShareABorder) {
  PieceTable pieces;
  pieces.Append(0.0, 1.0, std::vector<ClassWeight>{{0, 1e6}});
  pieces.Append(1.0, 2.0, std::vector<ClassWeight>{{0, 1e6}});
  pieces.Append(2.0, 3.0, std::vector<ClassWeight>{{0, 1e6}});
  pieces.WishParts(0, 2);
  pieces.WishParts(1, 2);
  pieces.WishValues(2);
  BINAttributeQuestion question;
  askWishes(pieces, question);
  EXPECT_EQ(std::count(question.borders.begin(), question.borders.end(), 1.0), 1);
  ASSERT_EQ(question.ranges.size(), 1U);
  EXPECT_EQ(question.ranges[0].low, 2.0);
  EXPECT_EQ(question.ranges[0].high, 3.0);
}

Piece wishFor(double weight, const RoundLimits& limits) {
  PieceTable pieces = stretch(0.0, 1.0, weight);
  wishFor({0}, limits, pieces);
  return pieces[0];
}

TEST(QuestionTest, ValuesAreWishedWhereTheyAreFew) {
  const RoundLimits limits{1000.0, 1.0, 16384};
  EXPECT_EQ(wishFor(1000.0, limits).wish, Piece::Wish::kValues);
  EXPECT_EQ(wishFor(1001.0, limits).wish, Piece::Wish::kParts);
}

TEST(QuestionTest, PartsFollowTheCasesUpToALimit) {
  EXPECT_EQ(wishFor(1600.0, {1000.0, 1.0, 16384}).parts, 200U);
  EXPECT_EQ(wishFor(16000.0, {1000.0, 10.0, 16384}).parts, 200U);
  EXPECT_EQ(wishFor(1e9, {1000.0, 1.0, 16384}).parts, 256U);
  EXPECT_EQ(wishFor(1e9, {1000.0, 1.0, 30}).parts, 30U);
  EXPECT_EQ(wishFor(1e9, {1000.0, 1.0, 1}).parts, 2U);
}

TEST(QuestionTest, SmallStretchesAmongLargeOnesAreFetchedWhole) {
  PieceTable pieces;
  pieces.Append(0.0, 1.0, std::vector<ClassWeight>{{0, 1e6}});
  pieces.Append(1.0, 2.0, std::vector<ClassWeight>{{0, 32}});
  pieces.Append(2.0, 3.0, std::vector<ClassWeight>{{0, 33}});
  wishFor({0, 1, 2}, {1000.0, 1.0, 16384}, pieces);
  EXPECT_EQ(pieces[0].wish, Piece::Wish::kParts);
  EXPECT_EQ(pieces[1].wish, Piece::Wish::kValues);
  EXPECT_EQ(pieces[2].wish, Piece::Wish::kParts);
}

}  // namespace
}  // namespace MCBinning
