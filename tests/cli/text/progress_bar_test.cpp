#include "cli/text/progress_bar.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(ProgressBar, ShowsShareRateAndTimeLeft) {
  EXPECT_EQ(progressLine("reading", 0.5, 1234.4, "cases", 61.2, 200),
            "reading  [############------------]  50%  1234 cases/s  1 min 02 s left");
  EXPECT_EQ(progressLine("reading", 1.0, 2.0, "cases", 0.0, 200),
            "reading  [########################] 100%  2 cases/s  0 s left");
  EXPECT_EQ(progressLine("reading", 0.0, 2.0, "cases", 7322.0, 200),
            "reading  [------------------------]   0%  2 cases/s  2 h 02 min left");
}

TEST(ProgressBar, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(progressLine("reading", -1.0, 10.0, "cases", -1.0, 200), "reading  10 cases/s");
}

TEST(ProgressBar, KeepsToTheWidthOfTheTerminal) {
  EXPECT_EQ(progressLine("reading", 0.5, 10.0, "cases", 1.0, 12), "reading  [##");
}

}  // namespace
}  // namespace mcbin
