#include "mcbinning/outputs.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/display.h"

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

}  // namespace
