#include "supervised/bin_algorithm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>

#include "support/display.h"
#include "support/supervised_run.h"
#include "support/virtual_slots.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::FileOperation;
using mcbinning_tests::Flushing;
using mcbinning_tests::kSeparatedRows;
using mcbinning_tests::PairRun;
using mcbinning_tests::SupervisedRun;
using mcbinning_tests::Written;
using testing::ElementsAre;
using testing::IsEmpty;

const MCStatus kException(3, false);
const MCStatus kSomePairNotOK(120018, true);

std::vector<MCStatus> statusesOf(const std::vector<BINAttributeTargetResults>& results) {
  std::vector<MCStatus> statuses;
  statuses.reserve(results.size());
  for (const auto& result : results) {
    statuses.push_back(result.GetStatus());
  }
  return statuses;
}

TEST(BINAlgorithmTest, VersionIsTheFixedBanner) {
  PairRun run(kSeparatedRows);
  EXPECT_EQ(run.Algorithm().GetVersion(),
            "Supervised Binning Component Ver. 1.0 (entropy and EF binning)");
  EXPECT_EQ(run.Algorithm().GetVersion().size(), 62U);
}

TEST(BINAlgorithmTest, GetVarListHasTheSlotAfterThoseOfTheInterface) {
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&MCBinning::BINAlgorithm::Display), 9U);
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&MCBinning::BINAlgorithm::GetVarList), 10U);
}

TEST(BINAlgorithmTest, WorksOnItsOwnCopiesOfSettingsAndList) {
  PairRun run(kSeparatedRows);
  MCBinning::BINAlgorithm& algorithm = run.Algorithm();
  EXPECT_NE(algorithm.GetSettings(), &run.settings);
  EXPECT_NE(algorithm.GetVarList(), &run.list);
  EXPECT_EQ(*algorithm.GetSettings(), run.settings);
  run.settings.SetNumberOfBins(77);
  run.list.RemoveVar(1);
  EXPECT_EQ(algorithm.GetSettings()->GetNumberOfBins(), 10);
  EXPECT_EQ(algorithm.GetVarList()->Size(), 2U);
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, NumberOfBinsNotSetIsError120009AndCanBeMended) {
  PairRun run(kSeparatedRows);
  run.settings = BINSettings();
  run.settings.SetTempDirName(run.directory.Path());
  const std::vector<int> refused = {99};
  EXPECT_EQ(run.Run(nullptr, &refused), MCStatus(120009, false));
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
  EXPECT_TRUE(run.Algorithm().GetSettings()->SetNumberOfBins(2));
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, UnusableSelectionIsError120008BeforeAnyCaseIsRead) {
  PairRun run(kSeparatedRows);
  const std::vector<int> none;
  const std::vector<int> one = {0};
  const std::vector<int> two = {1, 1};
  const MCStatus unusable(120008, false);
  EXPECT_EQ(run.Run(&one, &two), unusable);     // lengths differ
  EXPECT_EQ(run.Run(nullptr, &one), unusable);  // targets alone
  EXPECT_EQ(run.Run(&none, &none), unusable);
  EXPECT_EQ(run.Run(&none), unusable);
  EXPECT_EQ(run.Run(&one, &one), unusable);  // every pair refused
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_THAT(run.Results(), IsEmpty());
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
}

TEST(BINAlgorithmTest, OneGoodPairRunsAndTheRefusedOnesAreFiledWithTheirCodes) {
  PairRun run(kSeparatedRows);
  const std::vector<int> attributes = {0, -1, 0, 1, 0, 7};
  const std::vector<int> targets = {1, 1, 0, 1, -5, 1};
  EXPECT_EQ(run.Run(&attributes, &targets), kSomePairNotOK);
  const auto results = run.Results();
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(), MCStatus(120013, false),
                                               MCStatus(120006, false), MCStatus(120005, false),
                                               MCStatus(120013, false), MCStatus(120013, false)));
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(results[i].GetAttributeIndex(), attributes[i]);
    EXPECT_EQ(results[i].GetTargetIndex(), targets[i]);
  }
  EXPECT_THAT(results[0].GetCutPoints(), ElementsAre(3));
  EXPECT_THAT(results[1].GetCutPoints(), IsEmpty());
  EXPECT_THAT(results[1].GetCellCounts(), ElementsAre(IsEmpty()));
  EXPECT_EQ(results[1].GetNDistinctValues(), 0U);
  EXPECT_EQ(results[1].GetTotalWeight(), 0.0);
  EXPECT_EQ(results[1].GetMinimum(), 0.0);
  EXPECT_EQ(results[1].GetModelEntropy(), 0.0);
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120013, false));
}

TEST(BINAlgorithmTest, RefusedPairsWithImpossibleIndexesAreFoundAmongAllRecordsOnly) {
  PairRun run(kSeparatedRows);
  const std::vector<int> attributes = {0, -1, 1, 0};
  const std::vector<int> targets = {1, 1, 1, -5};
  EXPECT_EQ(run.Run(&attributes, &targets), kSomePairNotOK);
  EXPECT_EQ(run.Results().size(), 4U);
  const BINOutput& output = *run.Algorithm().GetOutput();
  BINAttributeTargetResults record;
  for (std::size_t i = 1; i < attributes.size(); ++i) {
    EXPECT_EQ(output.GetAttributeTargetCutPoints(attributes[i], targets[i], record),
              MCStatus(120013, false));
  }
  EXPECT_TRUE(record.GetStatus().IsOK());
  std::vector<BINAttributeTargetResults> records;
  EXPECT_EQ(output.GetAttributeCutPoints(-1, records), MCStatus(120013, false));
  EXPECT_THAT(records, IsEmpty());
}

TEST(BINAlgorithmTest, AttributesAloneThatAreAllOutOfRangeStillRun) {
  PairRun run(kSeparatedRows);
  const std::vector<int> attributes = {-1, 2};
  EXPECT_EQ(run.Run(&attributes), kSomePairNotOK);
  EXPECT_GT(run.cases.NextCalls(), 0U);
  const auto results = run.Results();
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(120011, false), MCStatus(120011, false)));
  EXPECT_EQ(results[0].GetAttributeIndex(), -1);
  EXPECT_EQ(results[0].GetTargetIndex(), 1);  // the list's target
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120011, false));
}

TEST(BINAlgorithmTest, AttributesAloneUseTheListsTargetAndRefuseItAndTheWeight) {
  SupervisedRun run({{1, 0, 1}, {2, 1, 1}});
  run.AddScale("x");
  run.AddTarget(2);
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  const std::vector<int> attributes = {0, 1, 2};
  EXPECT_EQ(run.Run(&attributes), kSomePairNotOK);
  EXPECT_THAT(statusesOf(run.Results()),
              ElementsAre(MCStatus(), MCStatus(120005, false), MCStatus(120005, false)));
}

TEST(BINAlgorithmTest, WholeListVisitsAllButTargetAndWeight) {
  SupervisedRun run({{1, 0, 1, 7, 0}, {2, 1, 1, 8, 1}});
  run.AddScale("x");
  run.AddTarget(2);
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  run.list.AddContVar("unused", "", IBINVariable::UndefinedRole);
  run.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::AttributeRole);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[0].GetAttributeIndex(), 0);
  EXPECT_EQ(results[1].GetAttributeIndex(), 3);
  EXPECT_EQ(results[2].GetAttributeIndex(), 4);
  MCStatus noColumn(120013, false);
  noColumn.SetDiscreteDatum(0, 3);
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(), noColumn, MCStatus()));
}

TEST(BINAlgorithmTest, WholeListWithoutAUsableTargetIsError120010) {
  SupervisedRun run({{1}, {2}});
  run.AddScale("x");
  EXPECT_EQ(run.Run(), MCStatus(120010, false));
  EXPECT_THAT(run.Results(), IsEmpty());

  SupervisedRun tooHigh({{1, 0, 0}, {2, 300, 1}});
  tooHigh.AddScale("x");
  tooHigh.AddTarget(2);
  tooHigh.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                         IBINVariable::AttributeRole);
  EXPECT_EQ(tooHigh.Run(), MCStatus(120010, false));
}

TEST(BINAlgorithmTest, SecondRunDoesNotReadTheCasesAgain) {
  PairRun run(kSeparatedRows);
  EXPECT_TRUE(run.Run().IsOK());
  const std::size_t hasNextCalls = run.cases.HasNextCalls();
  const std::size_t nextCalls = run.cases.NextCalls();
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_EQ(run.cases.HasNextCalls(), hasNextCalls);
  EXPECT_EQ(run.cases.NextCalls(), nextCalls);
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0].GetCutPoints(), results[1].GetCutPoints());
}

TEST(BINAlgorithmTest, BorderIsFixedByThePreparationAndNumberOfBinsReadAtEveryRun) {
  PairRun run(kSeparatedRows);
  run.settings.SetNumDistinctValueThreshold(2);
  run.settings.SetNumberOfBins(2);
  run.Run();
  run.Algorithm().GetSettings()->SetRightBorderClosed(false);
  run.Algorithm().GetSettings()->SetNumberOfBins(6);
  run.Run();
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_THAT(results[0].GetCutPoints(), ElementsAre(3.5));
  EXPECT_THAT(results[1].GetCutPoints(), ElementsAre(3.5));
}

TEST(BINAlgorithmTest, StoredStatusOutlivesALaterGoodRun) {
  PairRun run(kSeparatedRows);
  const std::vector<int> refused = {9};
  run.Run(&refused);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120011, false));
}

TEST(BINAlgorithmTest, NoCaseAtTheFirstRunIsError120004AndTheNextRunPrepares) {
  PairRun run(SupervisedRun::Rows{});
  EXPECT_EQ(run.Run(), MCStatus(120004, false));
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
  mcbinning_tests::VectorCases cases(kSeparatedRows);
  EXPECT_TRUE(run.Algorithm().Run(cases, nullptr, nullptr).IsOK());
  EXPECT_THAT(run.OnlyResult().GetCutPoints(), ElementsAre(3));
}

TEST(BINAlgorithmTest, PassWithoutAUsedCaseIsError120004AndTheNextRunPreparesAnew) {
  PairRun run({{1, 0, 0.5}, {2, 1, -3}});
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  EXPECT_EQ(run.Run(), MCStatus(120004, false));
  EXPECT_TRUE(run.directory.IsEmpty());
  mcbinning_tests::VectorCases cases({{1, 0, 1}, {2, 1, 1}});
  EXPECT_TRUE(run.Algorithm().Run(cases, nullptr, nullptr).IsOK());
}

TEST(BINAlgorithmTest, TemporaryDirectoryThatDoesNotExistIsError120001) {
  PairRun run(kSeparatedRows);
  run.settings.SetTempDirName(run.directory.Path() + "/nowhere");
  EXPECT_EQ(run.Run(), MCStatus(120001, false));
  run.Algorithm().GetSettings()->SetTempDirName(run.directory.Path());
  run.cases.Restart();
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, TemporaryFileThatCannotBeMadeIsError120021) {
  PairRun run(kSeparatedRows);
  run.files.FailAt(FileOperation::Probe, 1);
  EXPECT_EQ(run.Run(), MCStatus(120021, false));
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, ColumnLostByTheLastFlushIsError3OfItsPairs) {
  PairRun run(kSeparatedRows);
  run.files.FailAt(FileOperation::Write, 1);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  EXPECT_EQ(run.OnlyResult().GetStatus(), kException);
  EXPECT_EQ(run.Algorithm().GetStatus(), kException);
}

TEST(BINAlgorithmTest, DisplayBeforeAnyRunShowsNoPreparator) {
  PairRun run(kSeparatedRows);
  const std::string text = Written([&](std::ostream& os) { run.Algorithm().Display(os); });
  EXPECT_EQ(text, Flushing("\nStart of BINAlgorithm display\n"
                           "Record count: 0\n"
                           "out result: "
                           "\nStart of BINOutput display\n"
                           "cut point :"
                           "\nEnd of BINOutput display\n"
                           "End of BINAlgorithm display\n"));
}

TEST(BINAlgorithmTest, DisplayAfterARunShowsPreparatorAndResults) {
  PairRun run(kSeparatedRows);
  run.Run();
  // The list ends some of its lines without a flush.
  std::ostringstream os;
  run.Algorithm().Display(os);
  EXPECT_EQ(os.str(),
            "\nStart of BINAlgorithm display\n"
            "Record count: 6\n"
            "out result: BINDataPreparator object: \n"
            "\tPossible inputs used? \tOriginal record size = 2\n"
            "\tProcessed record size = 2\n"
            "\tInput-only record size = 1\n"
            "\tFrequency weight original and new indices: -1   0\n"
            "\tVariable index: 1 0 \n"
            "\tIndices of input variables in the variable list: 0 \n"
            "\tVariable measurement levels: 1 2 \n"
            "\tVariable roles: 1 2 \n"
            "\n"
            "\tStatus is OK.\n"
            "\bINegin display of BINVarList object.\n"
            "Total variables: 2\n"
            "Number of Continuous Variables = 1\n"
            "Number of Categorical Variables  = 1\n"
            "Target Index  = 1\n"
            "Variable 0\n"
            "Continuous variable: name = x, label = , role = Attribute\n"
            "Variable 1\n"
            "Categorical variable: name = target, label = , role = Target\n"
            "\tMeasurement Level = Numeric Categorical\n"
            "\tNumber of Categories = 2\n"
            "\tBINCatNumEncoder: Last code = -1\n"
            "\t\tNumeric values of categories: \n"
            "\n"
            "End of display for BINVarList object.\n"
            "\n"
            "Start of BINOutput display\n"
            "cut point :\n"
            "Start of BINAttributeTargetResults display\n"
            "BINDataTuple   attribute = 0\n"
            "target = 1\n"
            "Number of distinct values = 6\n"
            "Total weight = 6\n"
            "Total weight with missing = 6\n"
            "Minimum = 1\n"
            "Maximum = 6\n"
            "Model Entropy = 0\n"
            "Number of cutpoints = 1, the cutpoints:\n"
            "3\n"
            "The CellCounts are\n"
            "3  3  0  \n"
            "3  0  3  \n"
            "\n"
            "End of BINAttributeTargetResults display\n"
            "\n"
            "End of BINOutput display\n"
            "End of BINAlgorithm display\n");
}

}  // namespace
