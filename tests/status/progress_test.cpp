#include "mcbinning/progress.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <utility>

namespace {

TEST(ProgressReporterTest, FreshReporterHasIndexZeroAndNoTime) {
  BINProgressReporter reporter;
  EXPECT_EQ(reporter.DiscreteMeasure("IndexVar"), 0);
  EXPECT_EQ(reporter.ScaleMeasure("elapsedTime"), MCMV::gMissingValue);
}

TEST(ProgressReporterTest, MeasureNamesAreExact) {
  BINProgressReporter reporter;
  reporter.SetValues(7, 1.5);
  EXPECT_EQ(reporter.DiscreteMeasure("IndexVar"), 7);
  EXPECT_EQ(reporter.ScaleMeasure("elapsedTime"), 1.5);
  for (const char* name : {"indexvar", "IndexVar ", "IndexVa", "", "elapsedTime"}) {
    EXPECT_EQ(reporter.DiscreteMeasure(name), -1) << name;
  }
  for (const char* name : {"elapsedtime", "ElapsedTime", "elapsedTime ", "", "IndexVar"}) {
    EXPECT_EQ(reporter.ScaleMeasure(name), MCMV::gMissingValue) << name;
  }
}

TEST(ProgressReporterTest, CopyAndMoveCarryBothValues) {
  BINProgressReporter reporter;
  reporter.SetValues(3, 0.25);
  const BINProgressReporter constructed(reporter);
  BINProgressReporter copy;
  copy = constructed;
  BINProgressReporter moved(std::move(copy));
  BINProgressReporter moveAssigned;
  moveAssigned = std::move(moved);
  EXPECT_EQ(moveAssigned.DiscreteMeasure("IndexVar"), 3);
  EXPECT_EQ(moveAssigned.ScaleMeasure("elapsedTime"), 0.25);
}

TEST(ProgressReporterTest, HugeIndexDoesNotTrap) {
  BINProgressReporter reporter;
  reporter.SetValues(4294967295U, 0.0);
  EXPECT_EQ(reporter.DiscreteMeasure("IndexVar"), -1);
}

}  // namespace
