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

MCStatus errorAbout(long code, long variable) {
  MCStatus status(code, false);
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

TEST(BINAlgorithmPairTest, MissingValuesCountInTheTotalWithMissingOnly) {
  const double missing = MCMV::gMissingValue;
  PairRun run({{1, 0, 2}, {2, 1, 3}, {missing, 1, 5}, {3, missing, 7}, {4, -1, 11}, {4, 0, 0}});
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  run.Run();
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetTotalWeight(), 5.0);
  EXPECT_EQ(result.GetTotalWeightWithMissing(), 28.0);
  EXPECT_EQ(result.GetMaximum(), 2.0);
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(2, 2, 0), ElementsAre(3, 0, 3)));
}

TEST(BINAlgorithmPairTest, WeightsCountAsCases) {
  PairRun weighted({{1, 0, 2.6}, {2, 1, 1.5}, {2, 0, 1.4}});
  weighted.list.AddWeightVar("w", "", IBINVariable::RoundToClosestInt);
  weighted.Run();
  PairRun repeated({{1, 0}, {1, 0}, {1, 0}, {2, 1}, {2, 1}, {2, 0}});
  repeated.Run();
  const auto result = weighted.OnlyResult();
  EXPECT_EQ(result.GetCellCounts(), repeated.OnlyResult().GetCellCounts());
  EXPECT_EQ(result.GetCutPoints(), repeated.OnlyResult().GetCutPoints());
  EXPECT_EQ(result.GetModelEntropy(), repeated.OnlyResult().GetModelEntropy());
}

TEST(BINAlgorithmPairTest, NoValidCasesGiveWarning120015AndNoSearch) {
  const double missing = MCMV::gMissingValue;
  PairRun run({{missing, 0}, {missing, 1}});
  EXPECT_EQ(run.Run(), MCStatus(120018, true));
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), MCStatus(120015, true));
  EXPECT_THAT(result.GetCutPoints(), IsEmpty());
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(IsEmpty()));
  EXPECT_EQ(result.GetNDistinctValues(), 0U);
  EXPECT_EQ(result.GetTotalWeight(), 0.0);
  EXPECT_EQ(result.GetTotalWeightWithMissing(), 2.0);
  EXPECT_EQ(result.GetMinimum(), missing);
  EXPECT_EQ(result.GetMaximum(), missing);
  EXPECT_EQ(result.GetModelEntropy(), missing);
}

TEST(BINAlgorithmPairTest, OneDistinctValueGivesWarning120014WithTheAttribute) {
  SupervisedRun run({{0, 7}, {1, 7}, {1, 7}});
  run.AddTarget(2);
  run.AddScale("x");
  EXPECT_EQ(run.Run(), MCStatus(120018, true));
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), warningAbout(120014, 1));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 1, 2)));
  EXPECT_EQ(result.GetNDistinctValues(), 1U);
  EXPECT_GT(result.GetModelEntropy(), 0.0);
}

TEST(BINAlgorithmPairTest, OneTargetCategoryGivesNoCutPointAndWarning120016WithTheTarget) {
  PairRun run({{1, 0}, {2, 0}, {3, 0}});
  EXPECT_EQ(run.Run(), MCStatus(120018, true));
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), warningAbout(120016, 1));
  EXPECT_THAT(result.GetCutPoints(), IsEmpty());
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(3, 3)));
  EXPECT_EQ(result.GetModelEntropy(), 0.0);
}

TEST(BINAlgorithmPairTest, OneTargetCategoryWinsOverOneDistinctValue) {
  PairRun run({{7, 0}, {7, 0}});
  run.Run();
  EXPECT_EQ(run.OnlyResult().GetStatus(), warningAbout(120016, 1));
}

TEST(BINAlgorithmPairTest, NoAcceptedSplitGivesWarning120017) {
  PairRun run({{1, 0}, {2, 1}, {3, 0}, {4, 1}});
  EXPECT_EQ(run.Run(), MCStatus(120018, true));
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), MCStatus(120017, true));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(4, 2, 2)));
  EXPECT_EQ(result.GetModelEntropy(), 1.0);
}

TEST(BINAlgorithmPairTest, CategoriesAreCountedUpToTheHighestCodeOfAllUsedCases) {
  // The only case of code 3 has no attribute value.
  PairRun run({{1, 0}, {2, 1}, {MCMV::gMissingValue, 3}}, 5);
  run.Run();
  EXPECT_THAT(run.OnlyResult().GetCellCounts(),
              ElementsAre(ElementsAre(1, 1, 0, 0, 0), ElementsAre(1, 0, 1, 0, 0)));
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

TEST(BINAlgorithmPairTest, AsManyDistinctValuesAsTheThresholdAreNotPreBinned) {
  for (const int threshold : {6, 0}) {
    PairRun run(kSeparatedRows);
    run.settings.SetNumDistinctValueThreshold(threshold);
    run.settings.SetNumberOfBins(2);
    run.Run();
    EXPECT_THAT(run.OnlyResult().GetCutPoints(), ElementsAre(3));
  }
}

TEST(BINAlgorithmPairTest, ThresholdLeftAtItsDefaultNeverPreBins) {
  PairRun run(kSeparatedRows);
  run.settings.SetNumberOfBins(2);
  EXPECT_EQ(run.settings.GetNumDistinctValueThreshold(), -1);
  run.Run();
  EXPECT_THAT(run.OnlyResult().GetCutPoints(), ElementsAre(3));
}

TEST(BINAlgorithmPairTest, PreBinsWithoutABorderMakeOneBin) {
  // One heavy value reaches every share: its cut point is the maximum and is dropped.
  PairRun run({{1, 0, 1}, {2, 1, 1}, {3, 1, 90}});
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  run.settings.SetNumDistinctValueThreshold(2);
  run.settings.SetNumberOfBins(2);
  run.Run();
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), MCStatus(120017, true));
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(ElementsAre(92, 1, 91)));
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

TEST(BINAlgorithmPairTest, AttributeWhoseCodesAreTooHighIsRefusedWithItsIndex) {
  SupervisedRun run({{0, 0}, {1, 300}});
  run.AddTarget(2);
  run.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::AttributeRole);
  EXPECT_EQ(run.Run(), MCStatus(120018, true));
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetStatus(), errorAbout(120013, 1));
  EXPECT_THAT(result.GetCutPoints(), IsEmpty());
  EXPECT_THAT(result.GetCellCounts(), ElementsAre(IsEmpty()));
  EXPECT_EQ(result.GetNDistinctValues(), 0U);
  EXPECT_EQ(result.GetTotalWeight(), 0.0);
  EXPECT_EQ(result.GetTotalWeightWithMissing(), 0.0);
  EXPECT_EQ(result.GetMinimum(), MCMV::gMissingValue);
  EXPECT_EQ(result.GetMaximum(), MCMV::gMissingValue);
  EXPECT_EQ(result.GetModelEntropy(), MCMV::gMissingValue);
  EXPECT_EQ(run.Algorithm().GetStatus(), errorAbout(120013, 1));
}

TEST(BINAlgorithmPairTest, PairTargetWhoseCodesAreTooHighIsRefused) {
  SupervisedRun run({{0, 0, 1}, {1, 300, 2}});
  run.AddTarget(2);
  run.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::AttributeRole);
  run.AddScale("x");
  const std::vector<int> attributes = {2, 2};
  const std::vector<int> targets = {1, 0};
  EXPECT_EQ(run.Run(&attributes, &targets), MCStatus(120018, true));
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0].GetStatus(), MCStatus(120010, false));
  EXPECT_TRUE(results[1].GetStatus().IsOK());
}

TEST(BINAlgorithmPairTest, AnyCategoricalVariableCanBeThePairsTarget) {
  SupervisedRun run({{1, 0, 1}, {2, 0, 1}, {3, 1, 0}, {4, 1, 0}, {5, 2, 0}, {6, 2, 0}});
  run.AddScale("x");
  run.list.AddCatVar("c", "", 3, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::AttributeRole);
  run.AddTarget(2);
  const std::vector<int> attributes = {0};
  const std::vector<int> targets = {1};
  EXPECT_TRUE(run.Run(&attributes, &targets).IsOK());
  const auto result = run.OnlyResult();
  EXPECT_EQ(result.GetTargetIndex(), 1);
  EXPECT_EQ(result.GetCellCounts().front().size(), 4U);
}

TEST(BINAlgorithmPairTest, CaseOrderDoesNotMatter) {
  auto rows = kSeparatedRows;
  PairRun forward(rows);
  PairRun backward(SupervisedRun::Rows(rows.rbegin(), rows.rend()));
  forward.Run();
  backward.Run();
  EXPECT_EQ(forward.OnlyResult().GetCutPoints(), backward.OnlyResult().GetCutPoints());
  EXPECT_EQ(forward.OnlyResult().GetCellCounts(), backward.OnlyResult().GetCellCounts());
}

}  // namespace
