#include "mcbinning/outputs.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "support/display.h"
#include "support/virtual_slots.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;

MCStatus setPair(BINOutput& output, int attribute, int target, const MCStatus& status = {},
                 const std::set<double>& cutPoints = {}, const std::vector<double>& counts = {}) {
  return output.SetAttributeTargetResults(status, cutPoints, counts, attribute, target, 7, 10.5,
                                          12.5, -1.25, 99.0, 0.5);
}

MCStatus setAttribute(EFBINOutput& output, int attribute, const MCStatus& status = {},
                      const std::vector<double>& cutPoints = {},
                      const std::vector<double>& counts = {}) {
  return output.SetAttributeResults(status, cutPoints, counts, attribute, 7, 10.5, 12.5, -1.25,
                                    99.0);
}

void expectError(const MCStatus& status, long code) {
  EXPECT_TRUE(status == MCStatus(code, false)) << status.GetErrorCode();
}

TEST(BINAttributeTargetResultsTest, DefaultRecord) {
  const BINAttributeTargetResults record;
  EXPECT_TRUE(record.GetStatus().IsOK());
  EXPECT_EQ(record.GetAttributeIndex(), -1);
  EXPECT_EQ(record.GetTargetIndex(), -1);
  EXPECT_TRUE(record.GetCutPoints().empty());
  EXPECT_TRUE(record.GetCellCounts().empty());
  EXPECT_EQ(record.GetNDistinctValues(), 0U);
  EXPECT_EQ(record.GetTotalWeight(), 0.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 0.0);
  EXPECT_EQ(record.GetMinimum(), 0.0);
  EXPECT_EQ(record.GetMaximum(), 0.0);
  EXPECT_EQ(record.GetModelEntropy(), 0.0);
}

TEST(BINOutputTest, FreshOutputRefusesEveryQuery) {
  BINOutput output;
  std::vector<BINAttributeTargetResults> records(1);
  BINAttributeTargetResults record;
  expectError(output.GetAllCutPoints(records), 120020);
  expectError(output.GetAttributeCutPoints(0, records), 120013);
  expectError(output.GetAttributeTargetCutPoints(0, 1, record), 120013);
  EXPECT_EQ(records.size(), 1U);
  EXPECT_EQ(record.GetAttributeIndex(), -1);
}

TEST(BINOutputTest, RecordHoldsWhatWasSet) {
  BINOutput output;
  MCStatus status(120016, true);
  status.SetDiscreteDatum(0, 4);
  EXPECT_TRUE(setPair(output, 2, 4, status, {3.5, 1.5}, {1, 2, 3, 4, 5, 6}).IsOK());
  BINAttributeTargetResults record;
  EXPECT_TRUE(output.GetAttributeTargetCutPoints(2, 4, record) == status);
  EXPECT_TRUE(record.GetStatus() == status);
  EXPECT_EQ(record.GetAttributeIndex(), 2);
  EXPECT_EQ(record.GetTargetIndex(), 4);
  EXPECT_EQ(record.GetCutPoints(), (std::vector<double>{1.5, 3.5}));
  EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{1, 2}, {3, 4}, {5, 6}}));
  EXPECT_EQ(record.GetNDistinctValues(), 7U);
  EXPECT_EQ(record.GetTotalWeight(), 10.5);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 12.5);
  EXPECT_EQ(record.GetMinimum(), -1.25);
  EXPECT_EQ(record.GetMaximum(), 99.0);
  EXPECT_EQ(record.GetModelEntropy(), 0.5);
}

TEST(BINOutputTest, SettingRefusesImpossiblePairsAndStoresNothing) {
  BINOutput output;
  expectError(setPair(output, -1, 0), 120013);
  expectError(setPair(output, 0, -1), 120013);
  expectError(setPair(output, 3, 3), 120013);
  std::vector<BINAttributeTargetResults> records;
  expectError(output.GetAllCutPoints(records), 120020);
}

TEST(BINOutputTest, PairQueryRefusesImpossibleAndUnknownPairs) {
  BINOutput output;
  setPair(output, 2, 4);
  BINAttributeTargetResults record;
  expectError(output.GetAttributeTargetCutPoints(2, 2, record), 120013);
  expectError(output.GetAttributeTargetCutPoints(-1, 4, record), 120013);
  expectError(output.GetAttributeTargetCutPoints(2, -1, record), 120013);
  expectError(output.GetAttributeTargetCutPoints(4, 2, record), 120013);
  expectError(output.GetAttributeTargetCutPoints(2, 5, record), 120013);
  EXPECT_EQ(record.GetAttributeIndex(), -1);
}

TEST(BINOutputTest, AttributeQueryAppendsAndReturnsTheLastStatus) {
  BINOutput output;
  setPair(output, 2, 4, MCStatus(120017, true));
  setPair(output, 3, 4, MCStatus(120014, true));
  setPair(output, 2, 5, MCStatus(120016, true));
  setPair(output, 6, 5);
  std::vector<BINAttributeTargetResults> records;
  EXPECT_TRUE(output.GetAttributeCutPoints(2, records) == MCStatus(120016, true));
  EXPECT_TRUE(output.GetAttributeCutPoints(2, records) == MCStatus(120016, true));
  ASSERT_EQ(records.size(), 4U);
  EXPECT_EQ(records[0].GetTargetIndex(), 4);
  EXPECT_EQ(records[1].GetTargetIndex(), 5);
  EXPECT_EQ(records[2].GetTargetIndex(), 4);
  EXPECT_EQ(records[3].GetTargetIndex(), 5);
  EXPECT_TRUE(output.GetAttributeCutPoints(6, records).IsOK());
  expectError(output.GetAttributeCutPoints(4, records), 120013);
  expectError(output.GetAttributeCutPoints(-1, records), 120013);
  EXPECT_EQ(records.size(), 5U);
}

TEST(BINOutputTest, AllRecordsReplaceWhatTheVectorHeld) {
  BINOutput output;
  setPair(output, 2, 4, MCStatus(120017, true));
  setPair(output, 1, 4);
  std::vector<BINAttributeTargetResults> records(5);
  EXPECT_TRUE(output.GetAllCutPoints(records).IsOK());
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].GetAttributeIndex(), 2);
  EXPECT_EQ(records[1].GetAttributeIndex(), 1);
}

TEST(BINOutputTest, RowsOfAnEmptySetAndThreeValues) {
  BINOutput output;
  setPair(output, 0, 1, {}, {}, {3, 2, 1});
  BINAttributeTargetResults record;
  output.GetAttributeTargetCutPoints(0, 1, record);
  EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{3, 2, 1}}));
}

TEST(BINOutputTest, RowsOfTwoCutPointsAndSevenValuesDropTheSeventh) {
  BINOutput output;
  setPair(output, 0, 1, {}, {1.0, 2.0}, {1, 2, 3, 4, 5, 6, 7});
  BINAttributeTargetResults record;
  output.GetAttributeTargetCutPoints(0, 1, record);
  EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{1, 2}, {3, 4}, {5, 6}}));
}

TEST(BINOutputTest, NoValuesMakeEmptyRows) {
  BINOutput output;
  setPair(output, 0, 1);
  setPair(output, 0, 2, {}, {5.0}, {1});
  BINAttributeTargetResults record;
  output.GetAttributeTargetCutPoints(0, 1, record);
  EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{}}));
  output.GetAttributeTargetCutPoints(0, 2, record);
  EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{}, {}}));
}

TEST(BINOutputTest, PairSetTwiceKeepsBothAndFindsTheFirst) {
  BINOutput output;
  setPair(output, 0, 1, MCStatus(120017, true));
  setPair(output, 0, 1, MCStatus(120014, true));
  std::vector<BINAttributeTargetResults> records;
  output.GetAllCutPoints(records);
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[1].GetStatus().GetErrorCode(), 120014);
  BINAttributeTargetResults record;
  EXPECT_EQ(output.GetAttributeTargetCutPoints(0, 1, record).GetErrorCode(), 120017);
  EXPECT_EQ(record.GetStatus().GetErrorCode(), 120017);
}

TEST(BINOutputTest, CopiesAreIndependent) {
  BINOutput output;
  setPair(output, 0, 1, {}, {1.0});
  BINOutput copy(output);
  BINOutput assigned;
  assigned = output;
  setPair(output, 2, 1);
  for (BINOutput* other : {&copy, &assigned}) {
    BINAttributeTargetResults record;
    EXPECT_TRUE(other->GetAttributeTargetCutPoints(0, 1, record).IsOK());
    EXPECT_EQ(record.GetCutPoints(), std::vector<double>{1.0});
    expectError(other->GetAttributeTargetCutPoints(2, 1, record), 120013);
  }
}

constexpr char kSupervisedRecordText[] =
    "\n"
    "Start of BINAttributeTargetResults display\n"
    "BINDataTuple   attribute = 2\n"
    "target = 4\n"
    "Number of distinct values = 7\n"
    "Total weight = 10.5\n"
    "Total weight with missing = 12.5\n"
    "Minimum = -1.25\n"
    "Maximum = 99\n"
    "Model Entropy = 0.5\n"
    "Status has error code 120014\n"
    "Number of cutpoints = 2, the cutpoints:\n"
    "1.5\n"
    "1e+20\n"
    "The CellCounts are\n"
    "1  2  \n"
    "3  4  \n"
    "5  6.25  \n"
    "\n"
    "End of BINAttributeTargetResults display\n";

TEST(BINOutputTest, RecordDisplay) {
  BINOutput output;
  setPair(output, 2, 4, MCStatus(120014, true), {1.5, 1e20}, {1, 2, 3, 4, 5, 6.25});
  BINAttributeTargetResults record;
  output.GetAttributeTargetCutPoints(2, 4, record);
  EXPECT_EQ(DisplayOf(record), Flushing(kSupervisedRecordText));
}

TEST(BINOutputTest, RecordDisplayWithoutCutPointsAndStatus) {
  EXPECT_EQ(DisplayOf(BINAttributeTargetResults()),
            Flushing("\n"
                     "Start of BINAttributeTargetResults display\n"
                     "BINDataTuple   attribute = -1\n"
                     "target = -1\n"
                     "Number of distinct values = 0\n"
                     "Total weight = 0\n"
                     "Total weight with missing = 0\n"
                     "Minimum = 0\n"
                     "Maximum = 0\n"
                     "Model Entropy = 0\n"
                     "Number of cutpoints = 0\n"
                     "The CellCounts are\n"
                     "\n"
                     "End of BINAttributeTargetResults display\n"));
}

TEST(BINOutputTest, Display) {
  BINOutput output;
  EXPECT_EQ(DisplayOf(output),
            Flushing("\nStart of BINOutput display\ncut point :\nEnd of BINOutput display\n"));
  setPair(output, 2, 4, MCStatus(120014, true), {1.5, 1e20}, {1, 2, 3, 4, 5, 6.25});
  setPair(output, 2, 4, MCStatus(120014, true), {1.5, 1e20}, {1, 2, 3, 4, 5, 6.25});
  EXPECT_EQ(DisplayOf(output), Flushing(std::string("\nStart of BINOutput display\ncut point :") +
                                        kSupervisedRecordText + kSupervisedRecordText +
                                        "\nEnd of BINOutput display\n"));
}

TEST(BINAttributeResultsTest, DefaultRecord) {
  const BINAttributeResults record;
  EXPECT_TRUE(record.GetStatus().IsOK());
  EXPECT_EQ(record.GetAttributeIndex(), -1);
  EXPECT_TRUE(record.GetCutPoints().empty());
  EXPECT_TRUE(record.GetCellCounts().empty());
  EXPECT_EQ(record.GetNDistinctValues(), 0U);
  EXPECT_EQ(record.GetTotalWeight(), 0.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 0.0);
  EXPECT_EQ(record.GetMinimum(), 0.0);
  EXPECT_EQ(record.GetMaximum(), 0.0);
}

TEST(EFBINOutputTest, FreshOutputRefusesEveryQuery) {
  EFBINOutput output;
  std::vector<BINAttributeResults> records(1);
  BINAttributeResults record;
  expectError(output.GetAllCutPoints(records), 120020);
  expectError(output.GetAttributeCutPoints(0, record), 120013);
  EXPECT_EQ(records.size(), 1U);
  EXPECT_EQ(record.GetAttributeIndex(), -1);
}

TEST(EFBINOutputTest, NegativeIndexHasOneCodeWhenSetAndAnotherWhenAsked) {
  EFBINOutput output;
  expectError(setAttribute(output, -1), 120011);
  std::vector<BINAttributeResults> records;
  expectError(output.GetAllCutPoints(records), 120020);
  setAttribute(output, 0);
  BINAttributeResults record;
  expectError(output.GetAttributeCutPoints(-1, record), 120013);
  expectError(output.GetAttributeCutPoints(1, record), 120013);
  EXPECT_EQ(record.GetAttributeIndex(), -1);
}

TEST(EFBINOutputTest, RecordHoldsWhatWasSet) {
  EFBINOutput output;
  const MCStatus status(120019, true);
  EXPECT_TRUE(setAttribute(output, 3, status, {1.5, 2.5}, {4, 5}).IsOK());
  BINAttributeResults record;
  EXPECT_TRUE(output.GetAttributeCutPoints(3, record) == status);
  EXPECT_TRUE(record.GetStatus() == status);
  EXPECT_EQ(record.GetAttributeIndex(), 3);
  EXPECT_EQ(record.GetCutPoints(), (std::vector<double>{1.5, 2.5}));
  EXPECT_EQ(record.GetCellCounts(), (std::vector<double>{4, 5}));
  EXPECT_EQ(record.GetNDistinctValues(), 7U);
  EXPECT_EQ(record.GetTotalWeight(), 10.5);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 12.5);
  EXPECT_EQ(record.GetMinimum(), -1.25);
  EXPECT_EQ(record.GetMaximum(), 99.0);
}

TEST(EFBINOutputTest, AttributeSetTwiceKeepsBothAndFindsTheFirst) {
  EFBINOutput output;
  setAttribute(output, 5);
  setAttribute(output, 3, MCStatus(120014, true));
  setAttribute(output, 3, MCStatus(120015, true));
  BINAttributeResults record;
  EXPECT_EQ(output.GetAttributeCutPoints(3, record).GetErrorCode(), 120014);
  std::vector<BINAttributeResults> records(9);
  EXPECT_TRUE(output.GetAllCutPoints(records).IsOK());
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].GetAttributeIndex(), 5);
  EXPECT_EQ(records[2].GetStatus().GetErrorCode(), 120015);
}

TEST(EFBINOutputTest, CopiesAreIndependent) {
  EFBINOutput output;
  setAttribute(output, 0, {}, {1.0});
  EFBINOutput copy(output);
  EFBINOutput assigned;
  assigned = output;
  setAttribute(output, 1);
  for (EFBINOutput* other : {&copy, &assigned}) {
    BINAttributeResults record;
    EXPECT_TRUE(other->GetAttributeCutPoints(0, record).IsOK());
    EXPECT_EQ(record.GetCutPoints(), std::vector<double>{1.0});
    expectError(other->GetAttributeCutPoints(1, record), 120013);
  }
}

constexpr char kEqualFrequencyRecordText[] =
    "\n"
    "Start of BINAttributeResults display\n"
    "BINDataTuple   attribute = 3\n"
    "Number of distinct values = 7\n"
    "Total weight = 10.5\n"
    "Total weight with missing = 12.5\n"
    "Minimum = -1.25\n"
    "Maximum = 99\n"
    "Number of cutpoints = 2, the cutpoints:\n"
    "1.5\n"
    "2.5\n"
    "The CellCounts are\n"
    "4  5  6  \n"
    "End of BINAttributeResults display\n";

TEST(EFBINOutputTest, RecordDisplay) {
  EFBINOutput output;
  setAttribute(output, 3, {}, {1.5, 2.5}, {4, 5, 6});
  BINAttributeResults record;
  output.GetAttributeCutPoints(3, record);
  EXPECT_EQ(DisplayOf(record), Flushing(kEqualFrequencyRecordText));
}

TEST(EFBINOutputTest, RecordDisplayWithoutCountsAndWithAStatus) {
  EFBINOutput output;
  setAttribute(output, 3, MCStatus(120011, false));
  BINAttributeResults record;
  output.GetAttributeCutPoints(3, record);
  EXPECT_EQ(DisplayOf(record), Flushing("\n"
                                        "Start of BINAttributeResults display\n"
                                        "BINDataTuple   attribute = 3\n"
                                        "Number of distinct values = 7\n"
                                        "Total weight = 10.5\n"
                                        "Total weight with missing = 12.5\n"
                                        "Minimum = -1.25\n"
                                        "Maximum = 99\n"
                                        "Status has error code 120011\n"
                                        "Number of cutpoints = 0\n"
                                        "The CellCounts are\n"
                                        "\n"
                                        "End of BINAttributeResults display\n"));
}

TEST(EFBINOutputTest, Display) {
  EFBINOutput output;
  EXPECT_EQ(DisplayOf(output),
            Flushing("\nStart of EFBINOutput display\ncut point :\nEnd of EFBINOutput display\n"));
  setAttribute(output, 3, {}, {1.5, 2.5}, {4, 5, 6});
  setAttribute(output, 3, {}, {1.5, 2.5}, {4, 5, 6});
  EXPECT_EQ(DisplayOf(output), Flushing(std::string("\nStart of EFBINOutput display\ncut point :") +
                                        kEqualFrequencyRecordText + kEqualFrequencyRecordText +
                                        "\nEnd of EFBINOutput display\n"));
}

TEST(OutputsTest, SlotOrder) {
  using mcbinning_tests::VirtualSlot;
  EXPECT_EQ(VirtualSlot(&BINOutput::Display), 1U);
  EXPECT_EQ(VirtualSlot(&EFBINOutput::Display), 1U);
  EXPECT_EQ(VirtualSlot(&BINAttributeTargetResults::Display), mcbinning_tests::kBeforeSlot0);
  EXPECT_EQ(VirtualSlot(&BINAttributeResults::Display), mcbinning_tests::kBeforeSlot0);
  static_assert(std::has_virtual_destructor_v<BINOutput>);
  static_assert(std::has_virtual_destructor_v<EFBINOutput>);
  static_assert(!std::has_virtual_destructor_v<BINAttributeTargetResults>);
  static_assert(!std::has_virtual_destructor_v<BINAttributeResults>);
}

}  // namespace
