// What the algorithm files for one pair.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <string>
#include <utility>

#include "support/supervised_run.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::FileOperation;
using mcbinning_tests::kSeparatedRows;
using mcbinning_tests::PairRun;
using mcbinning_tests::SupervisedRun;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kInf = std::numeric_limits<double>::infinity();

MCStatus warningAbout(long code, long variable) {
  MCStatus status(code, true);
  status.SetDiscreteDatum(0, variable);
  return status;
}

TEST(BINAlgorithmPairTest, ClosedBorderFilesTheLastValueOfTheLeftPart) {
  PairRun run(kSeparatedRows);
  EXPECT_TRUE(run.Run().IsOK());
  const auto result = run.OnlyResult();
  EXPECT_TRUE(result.GetStatus().IsOK());
  EXPECT_EQ(result.GetAttributeIndex(), 0);
  EXPECT_EQ(result.GetTargetIndex(), 1);
  EXPECT_THAT(result.GetCutPoints(), ElementsAre(3));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 3, 0), ElementsAre(3, 0, 3)));
  EXPECT_EQ(result.GetNDistinctValues(), 6U);
  EXPECT_EQ(result.GetTotalWeight(), 6.0);
  EXPECT_EQ(result.GetTotalWeightWithMissing(), 6.0);
  EXPECT_EQ(result.GetMinimum(), 1.0);
  EXPECT_EQ(result.GetMaximum(), 6.0);
  EXPECT_EQ(result.GetModelEntropy(), 0.0);
  EXPECT_FALSE(std::signbit(result.GetModelEntropy()));
}

TEST(BINAlgorithmPairTest, OpenBorderFilesTheFirstValueOfTheRightPart) {
  PairRun run(kSeparatedRows);
  run.settings.SetRightBorderClosed(false);
  EXPECT_TRUE(run.Run().IsOK());
  const auto result = run.OnlyResult();
  EXPECT_THAT(result.GetCutPoints(), ElementsAre(4));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 3, 0), ElementsAre(3, 0, 3)));
}

TEST(BINAlgorithmPairTest, OneTargetCategoryWinsOverOneDistinctValue) {
  PairRun run({{7, 0}, {7, 0}});
  run.Run();
  EXPECT_EQ(run.OnlyResult().GetStatus(), warningAbout(120016, 1));
}

TEST(BINAlgorithmPairTest, MoreDistinctValuesThanTheThresholdArePreBinned) {
  for (const bool rightBorderClosed : {true, false}) {
    PairRun run(kSeparatedRows);
    run.settings.SetRightBorderClosed(rightBorderClosed);
    run.settings.SetNumDistinctValueThreshold(5);
    run.settings.SetNumberOfBins(2);
    EXPECT_TRUE(run.Run().IsOK());
    const auto result = run.OnlyResult();
    EXPECT_THAT(result.GetCutPoints(), ElementsAre(3.5));  // the border of the pre-bins
    EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 3, 0), ElementsAre(3, 0, 3)));
    EXPECT_EQ(result.GetNDistinctValues(), 6U);
  }
}

TEST(BINAlgorithmPairTest, WeightsThatSomebodyMadeZeroInTheirFileMakeNoPreBins) {
  SupervisedRun run({{1, 0, 2}, {2, 0, 2}, {3, 1, 2}, {4, 1, 2}});
  run.AddScale("x");
  run.AddTarget(2);
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  run.settings.SetNumDistinctValueThreshold(2);
  bool isFirst = true;  // the weights are read before any other column
  run.files.SetHook([&](FileOperation operation, const std::string& name) {
    if (operation == FileOperation::OpenForReading && isFirst) {
      std::ofstream(name, std::ios::binary) << std::string(4 * sizeof(double), '\0');
      isFirst = false;
    }
  });
  EXPECT_TRUE(run.Run().IsOK());
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetTotalWeight(), 0.0);
  EXPECT_THAT(result.GetCutPoints(), IsEmpty());
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(IsEmpty()));
  EXPECT_EQ(result.GetModelEntropy(), MCMV::gMissingValue);
}

TEST(BINAlgorithmPairTest, RowsBeyondThePreBinsGiveWarning120002AndTheRestIsSearched) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  for (const auto& [beyond, closed] : {std::pair{kInf, true}, {kInf, false}, {kLargest, false}}) {
    PairRun run({{1, 0}, {2, 0}, {3, 0}, {4, 1}, {5, 1}, {beyond, 1}});
    run.settings.SetNumDistinctValueThreshold(3);
    run.settings.SetNumberOfBins(2);
    run.settings.SetRightBorderClosed(closed);
    EXPECT_EQ(run.Run(), MCStatus(120018, true));
    const auto result = run.OnlyResult();
    EXPECT_EQ(result.GetStatus(), MCStatus(120002, true));
    EXPECT_THAT(result.GetCutPoints(), ElementsAre(3.5));
    EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 3, 0), ElementsAre(2, 0, 2)));
    EXPECT_EQ(result.GetTotalWeight(), 6.0);
    EXPECT_EQ(result.GetMaximum(), beyond);
  }
}

TEST(BINAlgorithmPairTest, RowsUpToAnInfinitePreBinBorderAreNotCounted) {
  PairRun run({{1, 0}, {1.2e308, 0}, {1.5e308, 1}, {1.7e308, 1}});
  run.settings.SetNumDistinctValueThreshold(3);
  run.settings.SetNumberOfBins(2);
  run.Run();
  EXPECT_EQ(run.OnlyResult().GetStatus(), MCStatus(120017, true));
  EXPECT_THAT(run.OnlyResult().GetCellCounts(), ElementsAre(ElementsAre(0, 0, 0)));
  EXPECT_EQ(run.OnlyResult().GetTotalWeight(), 4.0);
}

TEST(BINAlgorithmPairTest, WarningOfTheSearchReplacesTheOneOfCountingPreBins) {
  PairRun run({{1, 0}, {2, 1}, {3, 0}, {4, 1}, {5, 0}, {kInf, 1}});
  run.settings.SetNumDistinctValueThreshold(3);
  run.settings.SetNumberOfBins(2);
  run.Run();
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), MCStatus(120017, true));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(5, 3, 2)));
  // Five cases were counted, the pair weighs six.
  const double counted = -(0.6 * std::log2(0.6) + 0.4 * std::log2(0.4));
  EXPECT_EQ(result.GetModelEntropy(), 5 * counted / 6);
}

TEST(BINAlgorithmPairTest, SmallBinIsMergedAndTheModelEntropyIsOfTheBinsLeft) {
  const SupervisedRun::Rows rows = {{1, 0, 40}, {2, 1, 20}, {3, 0, 40}};
  PairRun plain(rows);
  plain.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  plain.Run();
  EXPECT_THAT(plain.OnlyResult().GetCutPoints(), ElementsAre(1, 2));
  EXPECT_EQ(plain.OnlyResult().GetModelEntropy(), 0.0);

  PairRun merged(rows);
  merged.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  merged.settings.SetSmallBinDetectionThreshold(0.6);
  EXPECT_TRUE(merged.Run().IsOK());
  const auto result = merged.OnlyResult();
  EXPECT_THAT(result.GetCutPoints(), ElementsAre(2));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(60, 40, 20), ElementsAre(40, 40, 0)));
  const double left = -(40.0 / 60 * std::log2(40.0 / 60) + 20.0 / 60 * std::log2(20.0 / 60));
  EXPECT_EQ(result.GetModelEntropy(), 60 * left / 100);
}

}  // namespace
