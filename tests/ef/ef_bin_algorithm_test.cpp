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

TEST(EFBINAlgorithmTest, WholeListVisitsEverythingButTheWeight) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  expectStatus(run->Run(cases, nullptr), MCStatus(120018, true));
  const auto records = run.Records();
  ASSERT_EQ(records.size(), 5U);
  const std::vector<int> expected = {kX, kConstant, kAllMissing, kOutside, kColour};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(records[i].GetAttributeIndex(), expected[i]);
  }
}

TEST(EFBINAlgorithmTest, WeightsAndMissingValues) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  run->Run(cases, nullptr);
  const auto record = run.RecordOf(kX);
  expectStatus(record.GetStatus(), MCStatus());
  EXPECT_EQ(record.GetCutPoints(), std::vector<double>{2.5});
  EXPECT_EQ(record.GetCellCounts(), (std::vector<double>{3, 3}));
  EXPECT_EQ(record.GetNDistinctValues(), 3U);
  EXPECT_EQ(record.GetTotalWeight(), 6.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 10.0);
  EXPECT_EQ(record.GetMinimum(), 1.0);
  EXPECT_EQ(record.GetMaximum(), 3.0);
}

TEST(EFBINAlgorithmTest, ConstantAttributeIsOneBinWithAWarning) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {kConstant};
  expectStatus(run->Run(cases, &attributes), MCStatus(120018, true));
  expectStatus(run->GetStatus(), warningAbout(120014, kConstant));
  const auto record = run.RecordOf(kConstant);
  expectStatus(record.GetStatus(), warningAbout(120014, kConstant));
  EXPECT_TRUE(record.GetCutPoints().empty());
  EXPECT_EQ(record.GetCellCounts(), std::vector<double>{10});
  EXPECT_EQ(record.GetNDistinctValues(), 1U);
  EXPECT_EQ(record.GetMinimum(), 7.0);
  EXPECT_EQ(record.GetMaximum(), 7.0);
}

TEST(EFBINAlgorithmTest, AttributeWithoutValidCases) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {kAllMissing};
  expectStatus(run->Run(cases, &attributes), MCStatus(120018, true));
  const auto record = run.RecordOf(kAllMissing);
  expectStatus(record.GetStatus(), MCStatus(120015, true));
  EXPECT_TRUE(record.GetCutPoints().empty());
  EXPECT_TRUE(record.GetCellCounts().empty());
  EXPECT_EQ(record.GetNDistinctValues(), 0U);
  EXPECT_EQ(record.GetTotalWeight(), 0.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 10.0);
  EXPECT_EQ(record.GetMinimum(), kMissing);
  EXPECT_EQ(record.GetMaximum(), kMissing);
}

TEST(EFBINAlgorithmTest, NoCutPointAmongSeveralValues) {
  EFRun run(scaleVariables(1));
  VectorCases cases(Rows{{1}, {2}, {2}, {2}});
  expectStatus(run->Run(cases, nullptr), MCStatus(120018, true));
  const auto record = run.RecordOf(0);
  expectStatus(record.GetStatus(), warningAbout(120019, 0));
  EXPECT_EQ(record.GetCellCounts(), std::vector<double>{4});
  EXPECT_EQ(record.GetNDistinctValues(), 2U);
}

TEST(EFBINAlgorithmTest, VariableWithoutColumnGetsItsRecord) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {kOutside};
  expectStatus(run->Run(cases, &attributes), MCStatus(120018, true));
  expectStatus(run->GetStatus(), errorAbout(120013, kOutside));
  const auto record = run.RecordOf(kOutside);
  expectStatus(record.GetStatus(), errorAbout(120013, kOutside));
  EXPECT_EQ(record.GetNDistinctValues(), 0U);
  EXPECT_EQ(record.GetTotalWeight(), 0.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 0.0);
  EXPECT_EQ(record.GetMinimum(), kMissing);
  EXPECT_EQ(record.GetMaximum(), kMissing);
}

TEST(EFBINAlgorithmTest, RefusedAttributesOfASelectionKeepTheirRecords) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {-1, kX, kSize, kWeight, kX, std::numeric_limits<int>::min()};
  expectStatus(run->Run(cases, &attributes), MCStatus(120018, true));
  expectStatus(run->GetStatus(), MCStatus(120011, false));
  const auto records = run.Records();
  ASSERT_EQ(records.size(), attributes.size());
  const std::vector<long> codes = {120011, 0, 120011, 120005, 0, 120011};
  for (std::size_t i = 0; i < records.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(records[i].GetAttributeIndex(), attributes[i]);
    if (codes[i] == 0) {
      EXPECT_EQ(records[i].GetCutPoints(), std::vector<double>{2.5});
      continue;
    }
    expectStatus(records[i].GetStatus(), MCStatus(codes[i], false));
    EXPECT_TRUE(records[i].GetCutPoints().empty());
    EXPECT_TRUE(records[i].GetCellCounts().empty());
    EXPECT_EQ(records[i].GetNDistinctValues(), 0U);
    EXPECT_EQ(records[i].GetTotalWeight(), 0.0);
    EXPECT_EQ(records[i].GetTotalWeightWithMissing(), 0.0);
    EXPECT_EQ(records[i].GetMinimum(), 0.0);
    EXPECT_EQ(records[i].GetMaximum(), 0.0);
  }
  BINAttributeResults record;
  expectStatus(run->GetOutput()->GetAttributeCutPoints(-1, record), MCStatus(120013, false));
  EXPECT_TRUE(record.GetStatus().IsOK());
}

TEST(EFBINAlgorithmTest, SelectionWithoutUsableAttributeIsRefusedAtOnce) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<std::vector<int>> selections = {{}, {kWeight}, {-1, kSize, kWeight}};
  for (const auto& attributes : selections) {
    expectStatus(run->Run(cases, &attributes), MCStatus(120011, false));
  }
  EXPECT_EQ(cases.HasNextCalls(), 0U);
  EXPECT_TRUE(run.Records().empty());
  expectStatus(run->GetStatus(), MCStatus());
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

TEST(EFBINAlgorithmTest, LaterRunsReadNoCasesAndAddRecords) {
  EFRun run(scaleVariables(2));
  VectorCases cases(fourRows(2));
  const std::vector<int> first = {0};
  const std::vector<int> second = {1, 0};
  run->Run(cases, &first);
  VectorCases untouched(Rows{});
  expectStatus(run->Run(untouched, &second), MCStatus());
  EXPECT_EQ(untouched.HasNextCalls(), 0U);
  const auto records = run.Records();
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[1].GetAttributeIndex(), 1);
  EXPECT_EQ(records[2].GetAttributeIndex(), 0);
  for (const auto& record : records) {
    expectHalves(record);
  }
}

TEST(EFBINAlgorithmTest, LaterRunsTakeTheNumberOfBinsButNotTheBorder) {
  EFRun run(scaleVariables(1));
  VectorCases cases(Rows{{1}, {2}, {2}, {2}, {2}, {2}, {3}});
  run->Run(cases, nullptr);
  EXPECT_EQ(run.Records()[0].GetCellCounts(), (std::vector<double>{6, 1}));
  run->GetSettings()->SetRightBorderClosed(false);
  run->Run(cases, nullptr);
  EXPECT_EQ(run.Records()[1].GetCellCounts(), (std::vector<double>{6, 1}));
  run->GetSettings()->SetNumberOfBins(7);
  run->Run(cases, nullptr);
  EXPECT_EQ(run.Records()[2].GetCutPoints(), (std::vector<double>{1.5, 2}));
  EXPECT_EQ(run.Records()[2].GetCellCounts(), (std::vector<double>{1, 5, 1}));
}

TEST(EFBINAlgorithmTest, OpenRightBorders) {
  EFRun run(scaleVariables(1));
  run->GetSettings()->SetRightBorderClosed(false);
  VectorCases cases(Rows{{1}, {2}, {2}, {2}, {2}, {2}, {3}});
  run->Run(cases, nullptr);
  EXPECT_EQ(run.RecordOf(0).GetCutPoints(), std::vector<double>{2});
  EXPECT_EQ(run.RecordOf(0).GetCellCounts(), (std::vector<double>{1, 6}));
}

TEST(EFBINAlgorithmTest, StoredStatusIsNotResetByALaterRun) {
  EFRun run(sixVariables());
  VectorCases cases(sixVariableRows());
  const std::vector<int> constant = {kConstant};
  const std::vector<int> good = {kX};
  run->Run(cases, &constant);
  expectStatus(run->Run(cases, &good), MCStatus(120018, true));
  expectStatus(run->GetStatus(), warningAbout(120014, kConstant));
  EXPECT_TRUE(run.RecordOf(kX).GetStatus().IsOK());
}

TEST(EFBINAlgorithmTest, WarningOfTheDataPassIsReturned) {
  EFRun run(sixVariables());
  Rows rows = sixVariableRows();
  rows[1][kColour] = 256.0;
  VectorCases cases(rows);
  const std::vector<int> good = {kX};
  const MCStatus status = run->Run(cases, &good);
  EXPECT_EQ(status.GetErrorCode(), 120012);
  EXPECT_TRUE(status.IsWarning());
  expectStatus(run->GetStatus(), MCStatus());
  const std::vector<int> lost = {kColour};
  expectStatus(run->Run(cases, &lost), MCStatus(120018, true));
  expectStatus(run.RecordOf(kColour).GetStatus(), errorAbout(120013, kColour));
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

TEST(EFBINAlgorithmTest, FailingFileOperations) {
  int failures = 0;
  for (std::size_t index = 0; index < kFileOperations; ++index) {
    const auto operation = static_cast<FileOperation>(index);
    for (std::size_t call = 1;; ++call) {
      SCOPED_TRACE(testing::Message() << "operation " << index << " call " << call);
      ScratchDirectory directory;
      FailingFileSystem files;
      files.FailAt(operation, call);
      MCStatus status;
      {
        EFBINSettings settings;
        settings.SetNumberOfBins(2);
        settings.SetTempDirName(directory.Path());
        BINVarList list = scaleVariables(2);
        MCBinning::EFBINAlgorithm algorithm(settings, list, files);
        VectorCases cases(fourRows(2));
        status = algorithm.Run(cases, nullptr);
        std::vector<BINAttributeResults> records;
        algorithm.GetOutput()->GetAllCutPoints(records);
        for (const auto& record : records) {
          if (record.GetStatus().IsOK()) {
            expectHalves(record);
          } else {
            EXPECT_TRUE(record.GetStatus().IsError());
            EXPECT_EQ(record.GetMinimum(), kMissing);
          }
        }
        if (status.IsOK()) {
          EXPECT_EQ(records.size(), 2U);
        }
      }
      EXPECT_EQ(files.OpenFiles(), 0U);
      if (operation == FileOperation::Remove) {
        directory.Clear();
      }
      if (files.Calls(operation) < call) {
        EXPECT_TRUE(status.IsOK());
        break;
      }
      failures += status.IsOK() ? 0 : 1;
    }
  }
  EXPECT_GT(failures, 10);
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
  EXPECT_EQ(os.str(),
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
            "\tStatus is OK.\n" +
                listText.str() +
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
                "End of EFBINAlgorithm display\n");
}

}  // namespace
}  // namespace mcbinning_tests
