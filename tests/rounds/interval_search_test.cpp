#include "rounds/interval_search.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "supervised/candidate_table.h"
#include "supervised/cut_point_search.h"

namespace MCBinning {
namespace {

using Row = SortedRows::Row;

/// A column of rows with their codes and weights, as an engine holds it.
BINAttributeAnswer answerOf(const std::vector<Row>& rows, const BINAttributeQuestion& asked) {
  std::vector<double> values;
  std::vector<int> codes;
  std::vector<double> weights;
  for (const Row& row : rows) {
    values.push_back(row.value);
    codes.push_back(row.code);
    weights.push_back(row.weight);
  }
  BINRoundCounter counter;
  BINRoundAnswer answer;
  EXPECT_TRUE(counter.Prepare({{asked}}, 2).IsOK());
  EXPECT_TRUE(
      counter.Count({rows.size(), codes.data(), weights.data(), {values.data()}, {}}, answer)
          .IsOK());
  return answer.attributes[0];
}

struct Found {
  Bins bins;
  int rounds = 0;
};

/// Searches rows of which only the values at the borders are known at first.
Found search(const std::vector<Row>& rows, const std::vector<double>& firstBorders,
             const RoundLimits& limits) {
  BINAttributeQuestion asked;
  askFirst(firstBorders, asked);
  BINAttributeAnswer answer = answerOf(rows, asked);
  PieceTable pieces = AttributeAnswer::Read(asked, answer, 2)->AllPieces();
  pieces.Tighten(answer.minimum, answer.maximum);
  IntervalSearch search(pieces, 2, true, limits);
  Found found;
  while (!search.IsFinished()) {
    EXPECT_GT(search.WishedWeight(), 0.0);
    asked = BINAttributeQuestion();
    search.Ask(asked);
    answer = answerOf(rows, asked);
    EXPECT_TRUE(search.GoOn(*AttributeAnswer::Read(asked, answer, 2)));
    ++found.rounds;
  }
  found.bins = search.TakeBins();
  return found;
}

Bins ordinary(const std::vector<Row>& rows) {
  SortedRows sorted(rows);
  Bins bins;
  searchCutPoints(CandidateTable::FromRows(sorted, 2, true), bins);
  return bins;
}

void expectSame(const Bins& found, const Bins& expected) {
  EXPECT_EQ(found.cutPoints, expected.cutPoints);
  EXPECT_EQ(found.counts, expected.counts);
}

/// The numbers from 0, the upper half of another class, but for some of each.
std::vector<Row> steppedRows(int size) {
  std::vector<Row> rows;
  for (int i = 0; i < size; ++i) {
    rows.push_back({i + 0.3, (i < size / 2) == (i % 7 != 0) ? 0 : 1, 1.0});
  }
  return rows;
}

TEST(IntervalSearchTest, FindsTheCutsOfTheOrdinarySearch) {
  const std::vector<Row> rows = steppedRows(3000);
  const Found found = search(rows, {500, 1000, 1500, 2000, 2500}, {20, 1, 64});
  expectSame(found.bins, ordinary(rows));
  EXPECT_EQ(found.bins.cutPoints.size(), 1U);
  EXPECT_GE(found.rounds, 2);
}

TEST(IntervalSearchTest, SmallIntervalIsFetchedOnceAndFinished) {
  const std::vector<Row> rows = steppedRows(3000);
  const Found found = search(rows, {}, {3000, 1, 64});
  expectSame(found.bins, ordinary(rows));
  EXPECT_EQ(found.rounds, 1);
}

TEST(IntervalSearchTest, KnownValuesNeedNoRound) {
  const std::vector<Row> rows = {{1, 0, 40}, {2, 0, 30}, {3, 1, 50}, {4, 1, 60}};
  const Found found = search(rows, {1, 2, 3, 4}, {20, 1, 64});
  expectSame(found.bins, ordinary(rows));
  EXPECT_EQ(found.rounds, 0);
}

TEST(IntervalSearchTest, OneClassNeedsNoRound) {
  std::vector<Row> rows;
  for (int i = 0; i < 1000; ++i) {
    rows.push_back({i + 0.3, 1, 1.0});
  }
  const Found found = search(rows, {100, 200}, {20, 1, 64});
  EXPECT_EQ(found.rounds, 0);
  EXPECT_EQ(found.bins.counts, (std::vector<double>{1000, 0, 1000}));
}

TEST(IntervalSearchTest, SplitThatCannotBeAcceptedNeedsNoRound) {
  std::vector<Row> rows;
  std::vector<double> borders;
  for (int i = 0; i < 20000; ++i) {
    rows.push_back({i + 0.3, i % 2, 1.0});
    if (i % 10 == 0) {
      borders.push_back(i);
    }
  }
  const Found found = search(rows, borders, {20, 1, 64});
  EXPECT_EQ(found.rounds, 0);
  EXPECT_EQ(found.bins.counts, (std::vector<double>{20000, 10000, 10000}));
}

/// The stretch from 0.5 to 2.5 is far worse than the best split. The value 4 is so light that the
/// positions after 3 and 4 come out alike, and whether the first of them is examined depends on
/// the last value of the stretch.
TEST(IntervalSearchTest, LastValueBeforeARunDecidesWhetherAPositionIsExamined) {
  const double huge = 0x1p50;
  for (const int last : {0, 1}) {
    const std::vector<Row> rows = {{0, 0, huge + 0x1p44}, {0, 1, huge},         {1, 1 - last, 1024},
                                   {2, last, 1024},       {3, 0, 0x1p44},       {4, 0, 1},
                                   {5, 0, huge},          {5, 1, huge + 0x1p46}};
    const Bins expected = ordinary(rows);
    ASSERT_EQ(expected.cutPoints.back(), last == 0 ? 4.0 : 3.0);
    const Found found = search(rows, {0, 0.5, 2.5, 3, 4, 5}, {1, 1, 64});
    expectSame(found.bins, expected);
  }
}

TEST(IntervalSearchTest, AnswerThatContradictsAnEarlierOneIsNoticed) {
  const std::vector<Row> rows = steppedRows(3000);
  BINAttributeQuestion asked;
  askFirst({}, asked);
  BINAttributeAnswer answer = answerOf(rows, asked);
  PieceTable pieces = AttributeAnswer::Read(asked, answer, 2)->AllPieces();
  pieces.Tighten(answer.minimum, answer.maximum);
  IntervalSearch search(pieces, 2, true, {3000, 1, 64});
  asked = BINAttributeQuestion();
  search.Ask(asked);
  answer = answerOf(steppedRows(2999), asked);
  EXPECT_FALSE(search.GoOn(*AttributeAnswer::Read(asked, answer, 2)));
}

}  // namespace
}  // namespace MCBinning
