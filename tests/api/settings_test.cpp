#include "mcbinning/settings.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

#include "platform/temp_directory.h"
#include "support/display.h"
#include "support/host_objects.h"

namespace {

using mcbinning_tests::CountingQuery;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::Flushing;
using mcbinning_tests::RecordingListener;

/// The settings that both classes have.
template <typename Settings>
class SettingsTest : public testing::Test {};

using BothSettings = testing::Types<BINSettings, EFBINSettings>;
TYPED_TEST_SUITE(SettingsTest, BothSettings);

TYPED_TEST(SettingsTest, Defaults) {
  TypeParam settings;
  EXPECT_EQ(settings.GetProgressListener(), nullptr);
  EXPECT_EQ(settings.GetCancelPointer(), nullptr);
  EXPECT_EQ(settings.GetNSkippedAttReports(), 0);
  EXPECT_EQ(settings.GetNSkippedCasesReports(), 100000);
  EXPECT_EQ(settings.GetNumberOfBins(), -1);
  EXPECT_TRUE(settings.IsRightBorderClosed());
  EXPECT_EQ(settings.GetTempDirName(), MCBinning::TempDirectory());
  static_assert(!std::is_polymorphic_v<TypeParam>);
}

TYPED_TEST(SettingsTest, SkippedReportsMustNotBeNegative) {
  TypeParam settings;
  EXPECT_TRUE(settings.SetNSkippedAttReports(7));
  EXPECT_TRUE(settings.SetNSkippedCasesReports(8));
  for (const int bad : {-1, INT_MIN}) {
    EXPECT_FALSE(settings.SetNSkippedAttReports(bad));
    EXPECT_FALSE(settings.SetNSkippedCasesReports(bad));
  }
  EXPECT_EQ(settings.GetNSkippedAttReports(), 7);
  EXPECT_EQ(settings.GetNSkippedCasesReports(), 8);
  for (const int good : {0, INT_MAX}) {
    EXPECT_TRUE(settings.SetNSkippedAttReports(good));
    EXPECT_TRUE(settings.SetNSkippedCasesReports(good));
    EXPECT_EQ(settings.GetNSkippedAttReports(), good);
    EXPECT_EQ(settings.GetNSkippedCasesReports(), good);
  }
}

TYPED_TEST(SettingsTest, FewerThanTwoBinsAreRefused) {
  TypeParam settings;
  for (const int bad : {1, 0, -1, INT_MIN}) {
    EXPECT_FALSE(settings.SetNumberOfBins(bad));
    EXPECT_EQ(settings.GetNumberOfBins(), -1);
  }
  EXPECT_TRUE(settings.SetNumberOfBins(2));
  EXPECT_FALSE(settings.SetNumberOfBins(1));
  EXPECT_EQ(settings.GetNumberOfBins(), 2);
  EXPECT_TRUE(settings.SetNumberOfBins(INT_MAX));
  EXPECT_EQ(settings.GetNumberOfBins(), INT_MAX);
}

TYPED_TEST(SettingsTest, UncheckedSettings) {
  TypeParam settings;
  RecordingListener listener;
  CountingQuery query;
  settings.SetProgressListener(&listener);
  settings.SetCancelPointer(&query);
  settings.SetRightBorderClosed(false);
  EXPECT_EQ(settings.GetProgressListener(), &listener);
  EXPECT_EQ(settings.GetCancelPointer(), &query);
  EXPECT_FALSE(settings.IsRightBorderClosed());
  settings.SetProgressListener(nullptr);
  settings.SetCancelPointer(nullptr);
  settings.SetRightBorderClosed(true);
  EXPECT_EQ(settings.GetProgressListener(), nullptr);
  EXPECT_EQ(settings.GetCancelPointer(), nullptr);
  EXPECT_TRUE(settings.IsRightBorderClosed());
}

TYPED_TEST(SettingsTest, TheDirectoryNameIsKeptAsItStands) {
  TypeParam settings;
  for (const std::string name : {"", "/", "no such directory//", "C:\\temp\\", "a\nb"}) {
    settings.SetTempDirName(name);
    EXPECT_EQ(settings.GetTempDirName(), name);
  }
  settings.SetTempDirName("a");
  std::string copy = settings.GetTempDirName();
  copy += "b";
  EXPECT_EQ(settings.GetTempDirName(), "a");
}

TYPED_TEST(SettingsTest, EqualityComparesEachOfItsFields) {
  const TypeParam fresh;
  TypeParam changed;
  changed.SetNSkippedAttReports(1);
  EXPECT_FALSE(changed == fresh);
  changed = fresh;
  changed.SetNSkippedCasesReports(1);
  EXPECT_FALSE(changed == fresh);
  changed = fresh;
  changed.SetRightBorderClosed(false);
  EXPECT_FALSE(changed == fresh);
  changed = fresh;
  changed.SetNumberOfBins(2);
  EXPECT_FALSE(changed == fresh);
  changed = fresh;
  EXPECT_TRUE(changed == fresh);
}

TYPED_TEST(SettingsTest, EqualityIgnoresHostHooksAndDirectory) {
  const TypeParam fresh;
  RecordingListener listener;
  CountingQuery query;
  TypeParam changed;
  changed.SetProgressListener(&listener);
  changed.SetCancelPointer(&query);
  changed.SetTempDirName("elsewhere");
  EXPECT_TRUE(changed == fresh);
}

TYPED_TEST(SettingsTest, CopiesCarryEveryField) {
  RecordingListener listener;
  CountingQuery query;
  TypeParam source;
  source.SetProgressListener(&listener);
  source.SetCancelPointer(&query);
  source.SetNSkippedAttReports(1);
  source.SetNSkippedCasesReports(2);
  source.SetNumberOfBins(3);
  source.SetRightBorderClosed(false);
  source.SetTempDirName("elsewhere");
  const TypeParam constructed(source);
  TypeParam assigned;
  assigned = constructed;
  const TypeParam& self = assigned;
  assigned = self;
  EXPECT_TRUE(assigned == source);
  EXPECT_EQ(assigned.GetProgressListener(), &listener);
  EXPECT_EQ(assigned.GetCancelPointer(), &query);
  EXPECT_EQ(assigned.GetTempDirName(), "elsewhere");
}

TEST(BINSettingsTest, DistinctValueThreshold) {
  BINSettings settings;
  EXPECT_EQ(settings.GetNumDistinctValueThreshold(), -1);
  EXPECT_FALSE(settings.SetNumDistinctValueThreshold(-1));
  EXPECT_TRUE(settings.SetNumDistinctValueThreshold(0));
  EXPECT_FALSE(settings.SetNumDistinctValueThreshold(INT_MIN));
  EXPECT_EQ(settings.GetNumDistinctValueThreshold(), 0);
  EXPECT_TRUE(settings.SetNumDistinctValueThreshold(INT_MAX));
  EXPECT_FALSE(settings == BINSettings());
}

TEST(BINSettingsTest, SmallBinDetectionThresholdIsAFraction) {
  BINSettings settings;
  EXPECT_EQ(settings.GetSmallBinDetectionThreshold(), 0.0);
  EXPECT_TRUE(settings.SetSmallBinDetectionThreshold(1.0));
  for (const double bad : {1.0000001, -0.0000001, std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_FALSE(settings.SetSmallBinDetectionThreshold(bad)) << bad;
    EXPECT_EQ(settings.GetSmallBinDetectionThreshold(), 1.0);
  }
  EXPECT_TRUE(settings.SetSmallBinDetectionThreshold(0.0));
  EXPECT_TRUE(settings.SetSmallBinDetectionThreshold(-0.0));
  EXPECT_TRUE(settings.SetSmallBinDetectionThreshold(0.25));
  EXPECT_TRUE(settings == BINSettings());
  BINSettings copy;
  copy = settings;
  EXPECT_EQ(copy.GetSmallBinDetectionThreshold(), 0.25);
  copy.SetNumDistinctValueThreshold(9);
  EXPECT_EQ(BINSettings(copy).GetNumDistinctValueThreshold(), 9);
  EXPECT_EQ(BINSettings(copy).GetSmallBinDetectionThreshold(), 0.25);
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
