#include "toolkit/fit/case_count.h"

#include <gmock/gmock.h>

#include <cmath>

namespace mcbin {
namespace {

using ::testing::ElementsAre;

TEST(CaseCount, CasesAreCountedWhereTheyBelong) {
  AttributeModel rules;
  rules.name = "x";
  rules.missing.values = {99.0};
  rules.cutPoints = {5.0};
  rules.bins.resize(2);
  rules.totalWeight = 7.0;
  AttributeModel counted = withoutCases(rules, 2);
  EXPECT_EQ(counted.totalWeight, 0.0);
  countCase(counted, ClosedSide::Right, 5.0, 1, 2.0);
  countCase(counted, ClosedSide::Left, 5.0, 0, 1.0);
  countCase(counted, ClosedSide::Left, std::nullopt, 0, 4.0);
  countCase(counted, ClosedSide::Left, 99.0, std::nullopt, 8.0);
  countCase(counted, ClosedSide::Left, -1.0, 0, 16.0);
  EXPECT_THAT(counted.bins[0].classWeights, ElementsAre(16.0, 2.0));
  EXPECT_THAT(counted.bins[1].classWeights, ElementsAre(1.0, 0.0));
  EXPECT_EQ(counted.missingCases.weight, 4.0);
  EXPECT_EQ(counted.userMissingCases.weight, 8.0);
  EXPECT_THAT(counted.userMissingCases.classWeights, ElementsAre(0.0, 0.0));
  EXPECT_EQ(counted.totalWeight, 19.0);
  EXPECT_EQ(counted.totalWeightWithMissing, 31.0);
  EXPECT_EQ(counted.minimum, -1.0);
  EXPECT_EQ(counted.maximum, 5.0);
}

TEST(CaseCount, RepeatedValuesCountOnce) {
  DistinctValues few;
  EXPECT_EQ(few.Count(), 0U);
  DistinctValues many;
  for (int i = 0; i < 30'000; ++i) {
    few.Add(i % 7);
    few.Add(-0.0);
    many.Add(std::fmod(i * 37.0, 10'007.0));
  }
  EXPECT_EQ(few.Count(), 7U);
  EXPECT_EQ(many.Count(), 10'007U);
}

}  // namespace
}  // namespace mcbin
