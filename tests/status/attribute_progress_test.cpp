#include "status/attribute_progress.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/counting_clock.h"
#include "support/host_objects.h"

namespace {

using MCBinning::AttributeProgress;
using MCBinning::MCStatus;
using mcbinning_tests::RecordingListener;

// The attributes reported when attribute i (from 0) ends with statuses[i].
std::vector<int> reported(int nSkippedReports, const std::vector<MCStatus>& statuses) {
  RecordingListener listener;
  AttributeProgress progress(&listener, [=] { return nSkippedReports; });
  for (std::size_t i = 0; i < statuses.size(); ++i) {
    progress.AttributeDone(static_cast<int>(i), statuses[i]);
  }
  return listener.indexes;
}

TEST(AttributeProgressTest, SkippingTwoOfSevenReportsTheThirdAndTheSixth) {
  EXPECT_EQ(reported(2, std::vector<MCStatus>(7)), (std::vector<int>{2, 5}));
}

TEST(AttributeProgressTest, SkippingNoneReportsEveryAttribute) {
  EXPECT_EQ(reported(0, std::vector<MCStatus>(3)), (std::vector<int>{0, 1, 2}));
}

TEST(AttributeProgressTest, FailedStepIsNotReportedAndTheNextOneIs) {
  const MCStatus ok;
  const MCStatus warning(120014, true);
  const MCStatus error(120013, false);
  EXPECT_EQ(reported(0, {ok, error, warning}), (std::vector<int>{0, 2}));
  EXPECT_EQ(reported(1, {ok, error, error, ok, ok, ok}), (std::vector<int>{3, 5}));
}

TEST(AttributeProgressTest, NullListenerHearsNothingAndCostsNoClockReading) {
  AttributeProgress progress(nullptr, [] { return 0; });
  const std::size_t before = mcbinning_tests::ClockReadings();
  for (int attribute = 0; attribute < 3; ++attribute) {
    progress.AttributeDone(attribute, MCStatus());
  }
  EXPECT_EQ(mcbinning_tests::ClockReadings(), before);
}

TEST(AttributeProgressTest, ElapsedTimeRunsFromTheStartOfThePhase) {
  RecordingListener listener;
  AttributeProgress progress(&listener, [] { return 1; });
  for (int attribute = 0; attribute < 6; ++attribute) {
    progress.AttributeDone(attribute, MCStatus());
  }
  EXPECT_EQ(listener.elapsed, (std::vector<double>{0.001, 0.002, 0.003}));
}

TEST(AttributeProgressTest, HugeSkipCountReportsNothing) {
  EXPECT_EQ(reported(2147483647, std::vector<MCStatus>(10)), std::vector<int>{});
}

}  // namespace
