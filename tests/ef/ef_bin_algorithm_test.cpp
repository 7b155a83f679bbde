#include "ef/ef_bin_algorithm.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "ef/ef_run.h"
#include "support/display.h"
#include "support/failing_file_system.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"
#include "support/virtual_slots.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

const double kMissing = MCMV::gMissingValue;

TEST(EFBINAlgorithmTest, CutsAnAttributeInHalf) {
  EFRun run(scaleVariables(1));
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus());
  expectStatus(run->GetStatus(), MCStatus());
  ASSERT_EQ(run.Records().size(), 1U);
  expectHalves(run.RecordOf(0));
}

TEST(EFBINAlgorithmTest, NumberOfBinsNotSetReadsNoCase) {
  EFRun run(scaleVariables(1), -1);
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus(120009, false));
  EXPECT_EQ(cases.HasNextCalls(), 0U);
  expectStatus(run->GetStatus(), MCStatus());
  EXPECT_TRUE(run->GetSettings()->SetNumberOfBins(2));
  expectStatus(run->Run(cases, nullptr), MCStatus());
  expectHalves(run.RecordOf(0));
}

TEST(EFBINAlgorithmTest, NoCases) {
  EFRun run(scaleVariables(1));
  VectorCases none(Rows{});
  expectStatus(run->Run(none, nullptr), MCStatus(120004, false));
  EXPECT_TRUE(run.Records().empty());
  EXPECT_TRUE(run.Directory().IsEmpty());
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus());
  expectHalves(run.RecordOf(0));
}

TEST(EFBINAlgorithmTest, PreparationThatFailedIsMadeAnew) {
  EFRun run(sixVariables());
  VectorCases unusable(Rows{{1, 0, 1, 1, 1, 1}, {2, kMissing, 1, 1, 1, 1}});
  expectStatus(run->Run(unusable, nullptr), MCStatus(120004, false));
  EXPECT_TRUE(run.Directory().IsEmpty());
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {kX};
  expectStatus(run->Run(cases, &attributes), MCStatus());
  EXPECT_EQ(run.RecordOf(kX).GetCutPoints(), std::vector<double>{2.5});
}

TEST(EFBINAlgorithmTest, UnusableTemporaryDirectory) {
  EFRun run(scaleVariables(1));
  run->GetSettings()->SetTempDirName(run.Directory().Path() + "/none");
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus(120001, false));
  run->GetSettings()->SetTempDirName(run.Directory().Path());
  cases.Restart();
  expectStatus(run->Run(cases, nullptr), MCStatus());
  expectHalves(run.RecordOf(0));
}

TEST(EFBINAlgorithmTest, VersionBanner) {
  EFRun run(scaleVariables(1));
  EXPECT_EQ(run->GetVersion(), "Supervised Binning Component Ver. 1.0 (entropy and EF binning)");
  EXPECT_EQ(run->GetVersion().size(), 62U);
}

TEST(EFBINAlgorithmTest, SettingsAndListAreCopies) {
  ScratchDirectory directory;
  EFBINSettings settings;
  settings.SetNumberOfBins(5);
  BINVarList list = scaleVariables(1);
  MCBinning::EFBINAlgorithm algorithm(settings, list);
  settings.SetNumberOfBins(9);
  list.RemoveVar(0);
  EXPECT_EQ(algorithm.GetSettings()->GetNumberOfBins(), 5);
  EXPECT_EQ(algorithm.GetVarList()->Size(), 1U);
  EXPECT_NE(algorithm.GetVarList(), &list);
}

TEST(EFBINAlgorithmTest, SlotOrder) {
  EXPECT_EQ(VirtualSlot(&MCBinning::EFBINAlgorithm::Display), 9U);
  EXPECT_EQ(VirtualSlot(&MCBinning::EFBINAlgorithm::GetVarList), 10U);
}

TEST(EFBINAlgorithmTest, DisplayBeforeAnyRun) {
  EFRun run(scaleVariables(1));
  const std::string text = Written([&](std::ostream& os) { run->Display(os); });
  EXPECT_EQ(text, Flushing("\n"
                           "Start of EFBINAlgorithm display\n"
                           "Record count: 0\n"
                           "out result: \n"
                           "Start of EFBINOutput display\n"
                           "cut point :\n"
                           "End of EFBINOutput display\n"
                           "End of EFBINAlgorithm display\n"));
}

constexpr char kDisplayOfPass[] =
    "\n"
    "Start of EFBINAlgorithm display\n"
    "Record count: 4\n"
    "out result: BINDataPreparator object: \n"
    "\tPossible inputs used? \tOriginal record size = 1\n"
    "\tProcessed record size = 1\n"
    "\tInput-only record size = 1\n"
    "\tFrequency weight original and new indices: -1   0\n"
    "\tVariable index: 0 \n"
    "\tIndices of input variables in the variable list: 0 \n"
    "\tVariable measurement levels: 1 \n"
    "\tVariable roles: 1 \n"
    "\n"
    "\tStatus is OK.\n";

constexpr char kDisplayOfOutput[] =
    "\n"
    "Start of EFBINOutput display\n"
    "cut point :\n"
    "Start of BINAttributeResults display\n"
    "BINDataTuple   attribute = 0\n"
    "Number of distinct values = 4\n"
    "Total weight = 4\n"
    "Total weight with missing = 4\n"
    "Minimum = 1\n"
    "Maximum = 4\n"
    "Number of cutpoints = 1, the cutpoints:\n"
    "2.5\n"
    "The CellCounts are\n"
    "2  2  \n"
    "End of BINAttributeResults display\n"
    "\n"
    "End of EFBINOutput display\n"
    "End of EFBINAlgorithm display\n";

TEST(EFBINAlgorithmTest, DisplayAfterARun) {
  const BINVarList list = scaleVariables(1);
  EFRun run(list);
  VectorCases cases(fourRows(1));
  run->Run(cases, nullptr);
  std::ostringstream listText;
  list.Display(listText);
  // The list ends some of its lines without a flush.
  std::ostringstream os;
  run->Display(os);
  EXPECT_EQ(os.str(), kDisplayOfPass + listText.str() + kDisplayOfOutput);
}

}  // namespace
}  // namespace mcbinning_tests
