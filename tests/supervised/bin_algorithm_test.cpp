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

const MCStatus kException(3, false);
const MCStatus kSomePairNotOK(120018, true);

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

constexpr char kDisplayAfterARun[] =
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
    "End of BINAlgorithm display\n";

TEST(BINAlgorithmTest, DisplayAfterARunShowsPreparatorAndResults) {
  PairRun run(kSeparatedRows);
  run.Run();
  // The list ends some of its lines without a flush.
  std::ostringstream os;
  run.Algorithm().Display(os);
  EXPECT_EQ(os.str(), kDisplayAfterARun);
}

}  // namespace
