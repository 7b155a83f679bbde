#include "rounds/target_search.h"

#include <gtest/gtest.h>

#include <vector>

#include "supervised/ef_preprocess.h"

namespace MCBinning {
namespace {

/// 100 cases: 30 below 1, 20 at 1, 25 between 1 and 2, 25 at 2 and above.
PieceTable pieces() {
  PieceTable table;
  table.Append(0.0, 1.0, std::vector<ClassWeight>{{0, 30}});
  table.Append(1.0, 1.0, std::vector<ClassWeight>{{0, 20}});
  table.Append(1.0, 2.0, std::vector<ClassWeight>{{0, 25}});
  table.Append(2.0, 2.0, std::vector<ClassWeight>{{0, 1}});
  table.Append(2.0, 3.0, std::vector<ClassWeight>{{0, 24}});
  return table;
}

std::vector<double> wishedLows(int numberOfBins) {
  const TargetSearch search(pieces(), numberOfBins, {1000, 1, 64});
  BINAttributeQuestion asked;
  search.Ask(asked);
  std::vector<double> lows;
  for (const BINValueRange& range : asked.ranges) {
    lows.push_back(range.low);
  }
  return lows;
}

TEST(TargetSearchTest, StretchInWhichATargetIsReachedIsWished) {
  EXPECT_EQ(wishedLows(3), (std::vector<double>{1.0}));            // 33.3 at the value 1, 66.7
  EXPECT_EQ(wishedLows(5), (std::vector<double>{0.0, 1.0, 2.0}));  // 20, 40, 60, 80
}

TEST(TargetSearchTest, StretchAfterAMetTargetIsWishedForItsFirstValue) {
  EXPECT_EQ(wishedLows(2), (std::vector<double>{1.0}));  // 50 is met by the value 1
}

TEST(TargetSearchTest, NothingIsWishedWhereNoTargetIsReachedInAStretch) {
  PieceTable table;
  table.Append(0.0, 1.0, std::vector<ClassWeight>{{0, 30}});
  table.Append(1.0, 1.0, std::vector<ClassWeight>{{0, 30}});
  table.Append(1.0, 2.0, std::vector<ClassWeight>{{0, 40}});
  table.Tighten(0.25, 1.75);
  const TargetSearch search(table, 2, {1000, 1, 64});
  ASSERT_TRUE(search.IsFinished());
  const SortedRows rows(search.Pieces().Rows());
  std::vector<double> cutPoints;
  std::vector<double> weights;
  BINEFPreProcess(2, true).RunOverPairs(rows, cutPoints, weights, 100.0);
  EXPECT_EQ(cutPoints, (std::vector<double>{1.0}));
  EXPECT_EQ(weights, (std::vector<double>{60, 40}));
}

}  // namespace
}  // namespace MCBinning
