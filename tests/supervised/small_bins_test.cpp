#include "supervised/small_bins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace MCBinning {
namespace {

using testing::ElementsAre;

Bins binsOf(std::vector<double> cutPoints, std::vector<double> counts) {
  return {std::move(cutPoints), std::move(counts), 3};
}

TEST(SmallBinsTest, SmallBinJoinsTheNeighbourThatLeavesTheLowerEntropy) {
  Bins bins = binsOf({1, 2}, {10, 10, 0, 2, 2, 0, 10, 0, 10});
  mergeSmallBins(0.5, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(2));
  EXPECT_THAT(bins.counts, ElementsAre(12, 12, 0, 10, 0, 10));

  bins = binsOf({1, 2}, {10, 10, 0, 2, 0, 2, 10, 0, 10});
  mergeSmallBins(0.5, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1));
  EXPECT_THAT(bins.counts, ElementsAre(10, 10, 0, 12, 0, 12));
}

TEST(SmallBinsTest, TieMergesToTheLeft) {
  Bins bins = binsOf({1, 2}, {10, 10, 0, 2, 1, 1, 10, 0, 10});
  mergeSmallBins(0.5, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(2));
  EXPECT_THAT(bins.counts, ElementsAre(12, 11, 1, 10, 0, 10));
}

TEST(SmallBinsTest, BinIsSmallOnlyBelowTheShareOfTheLighterNeighbour) {
  const Bins before = binsOf({1, 2}, {10, 10, 0, 4, 4, 0, 8, 0, 8});
  Bins bins = before;
  mergeSmallBins(0.5, bins);  // 0.5 * 8 is not above 4
  EXPECT_EQ(bins.cutPoints, before.cutPoints);
  mergeSmallBins(0.625, bins);  // 0.625 * 8 is
  EXPECT_THAT(bins.cutPoints, ElementsAre(2));
  bins = binsOf({1, 2}, {8, 8, 0, 4, 4, 0, 10, 0, 10});
  mergeSmallBins(0.5, bins);
  EXPECT_EQ(bins.cutPoints, before.cutPoints);
}

TEST(SmallBinsTest, OuterBinsAreNeverSmall) {
  Bins bins = binsOf({1, 2}, {1, 1, 0, 9, 4, 5, 1, 0, 1});
  mergeSmallBins(1.0, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1, 2));
}

TEST(SmallBinsTest, TwoBinsAreLeftAlone) {
  Bins bins = binsOf({1}, {1, 1, 0, 9, 4, 5});
  mergeSmallBins(1.0, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1));
}

TEST(SmallBinsTest, ThresholdOfZeroChangesNothing) {
  Bins bins = binsOf({1, 2}, {10, 10, 0, 0, 0, 0, 10, 0, 10});
  mergeSmallBins(0.0, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1, 2));
}

TEST(SmallBinsTest, BinsAreJudgedBeforeAnyIsMerged) {
  // Bin 1 is small beside bin 2, bin 2 would be small beside the merged bin 1 but is not now.
  Bins bins = binsOf({1, 2, 3}, {20, 20, 0, 3, 3, 0, 8, 0, 8, 20, 20, 0});
  mergeSmallBins(0.4, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(2, 3));
  EXPECT_THAT(bins.counts, ElementsAre(23, 23, 0, 8, 0, 8, 20, 20, 0));
}

TEST(SmallBinsTest, NeighboursMarkedTowardsEachOtherFoldThreeBinsIntoOne) {
  // Bin 1 goes right, bin 3 goes left: both join bin 2.
  Bins bins = binsOf({1, 2, 3, 4}, {20, 20, 0, 3, 0, 3, 10, 0, 10, 4, 0, 4, 20, 20, 0});
  mergeSmallBins(0.5, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1, 4));
  EXPECT_THAT(bins.counts, ElementsAre(20, 20, 0, 17, 0, 17, 20, 20, 0));
}

TEST(SmallBinsTest, BothMarksOfTwoNeighboursThatJoinEachOtherAreApplied) {
  // Bins 2 and 3 both ask for their union; the second mark then joins it to bin 1. Only a threshold
  // above 1 finds two neighbours small.
  Bins bins = binsOf({1, 2, 3, 4}, {9, 9, 0, 20, 20, 0, 3, 0, 3, 4, 0, 4, 30, 30, 0});
  mergeSmallBins(2.0, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(1, 4));
  EXPECT_THAT(bins.counts, ElementsAre(9, 9, 0, 27, 20, 7, 30, 30, 0));
}

TEST(SmallBinsTest, MarksAreAppliedInAscendingOrder) {
  // Bins 1 and 3 go left, the bins after them stay.
  Bins bins = binsOf({1, 2, 3, 4, 5}, {10, 10, 0, 1, 1, 0, 10, 0, 10,  //
                                       1, 0, 1, 10, 10, 0, 12, 0, 12});
  mergeSmallBins(0.5, bins);
  EXPECT_THAT(bins.cutPoints, ElementsAre(2, 4, 5));
  EXPECT_THAT(bins.counts, ElementsAre(11, 11, 0, 11, 0, 11, 10, 10, 0, 12, 0, 12));
}

}  // namespace
}  // namespace MCBinning
