#include "mcbinning/settings.h"

#include <gtest/gtest.h>

#include "platform/temp_directory.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;

/// The settings that both classes have.
template <typename Settings>
class SettingsTest : public testing::Test {};

using BothSettings = testing::Types<BINSettings, EFBINSettings>;
TYPED_TEST_SUITE(SettingsTest, BothSettings);

TYPED_TEST(SettingsTest, FilesGoToTheTemporaryDirectoryUnlessToldOtherwise) {
  EXPECT_EQ(TypeParam().GetTempDirName(), MCBinning::tempDirectory());
}

TYPED_TEST(SettingsTest, NoReportNeedsToBeSkipped) {
  TypeParam settings;
  EXPECT_TRUE(settings.SetNSkippedAttReports(0));
  EXPECT_TRUE(settings.SetNSkippedCasesReports(0));
  EXPECT_EQ(settings.GetNSkippedCasesReports(), 0);
}

TEST(BINSettingsTest, DisplayOfFreshSettings) {
  EXPECT_EQ(DisplayOf(BINSettings()),
            Flushing("\n"
                     "Start of BINSettings display\n"
                     "Number of progress reports to skip when create bins for attribute = 0\n"
                     "Number of progress reports to skip when read data file = 100000\n"
                     "if use EF as proprecess = 1\n"
                     "Number of distinct value = -1\n"
                     "Number of bins for EF = -1\n"
                     "End of BINSettings display\n"));
}

TEST(BINSettingsTest, DisplayOfChangedSettings) {
  BINSettings settings;
  settings.SetNSkippedAttReports(1);
  settings.SetNSkippedCasesReports(2);
  settings.SetRightBorderClosed(false);
  settings.SetNumDistinctValueThreshold(3);
  settings.SetNumberOfBins(4);
  settings.SetTempDirName("not shown");
  settings.SetSmallBinDetectionThreshold(0.5);
  EXPECT_EQ(DisplayOf(settings),
            Flushing("\n"
                     "Start of BINSettings display\n"
                     "Number of progress reports to skip when create bins for attribute = 1\n"
                     "Number of progress reports to skip when read data file = 2\n"
                     "if use EF as proprecess = 0\n"
                     "Number of distinct value = 3\n"
                     "Number of bins for EF = 4\n"
                     "End of BINSettings display\n"));
}

TEST(EFBINSettingsTest, DisplayShowsTheFlagBare) {
  EFBINSettings settings;
  EXPECT_EQ(DisplayOf(settings),
            Flushing("\n"
                     "Start of EFBINSettings display\n"
                     "Number of progress reports to skip when create bins for attribute = 0\n"
                     "Number of progress reports to skip when read data file = 100000\n"
                     "1\n"
                     "Number of bins for EF = -1\n"
                     "End of EFBINSettings display\n"));
  settings.SetNSkippedAttReports(1);
  settings.SetNSkippedCasesReports(2);
  settings.SetRightBorderClosed(false);
  settings.SetNumberOfBins(4);
  EXPECT_EQ(DisplayOf(settings),
            Flushing("\n"
                     "Start of EFBINSettings display\n"
                     "Number of progress reports to skip when create bins for attribute = 1\n"
                     "Number of progress reports to skip when read data file = 2\n"
                     "0\n"
                     "Number of bins for EF = 4\n"
                     "End of EFBINSettings display\n"));
}

}  // namespace
