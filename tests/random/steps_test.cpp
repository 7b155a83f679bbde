#include "random/steps.h"

#include <gtest/gtest.h>

#include "random/random_runs.h"

namespace mcbinning_tests {
namespace {

TEST(RandomSteps, ListsAgreeWithThePlainModel) { forRandomRuns(200, stepsOfLists); }
TEST(RandomSteps, SettingsAgreeWithThePlainModel) { forRandomRuns(10000, stepsOfSettings); }
TEST(RandomSteps, IntervalsAgreeWithThePlainModel) { forRandomRuns(10000, stepsOfIntervals); }
TEST(RandomSteps, DefinitionsAgreeWithThePlainModel) { forRandomRuns(10000, stepsOfDefinitions); }
TEST(RandomSteps, EncodersAgreeWithThePlainModel) { forRandomRuns(10000, stepsOfEncoders); }
TEST(RandomSteps, OutputsAgreeWithThePlainModel) { forRandomRuns(5000, stepsOfOutputs); }

}  // namespace
}  // namespace mcbinning_tests
