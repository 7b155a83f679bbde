#include "toolkit/fit/bin_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/toolkit/support/example_model.h"

namespace mcbin {
namespace {

using ::testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// An equal-frequency model of one attribute, as the library leaves it.
Model cutAt(std::vector<double> cutPoints, const std::vector<double>& weights, double total) {
  Model model;
  model.method = Method::EqualFrequency;
  model.options.bins = static_cast<int>(weights.size());
  model.cases.read = 100;
  AttributeModel attribute;
  attribute.totalWeight = total;
  attribute.cutPoints = std::move(cutPoints);
  for (const double weight : weights) attribute.bins.push_back({weight, {}});
  model.attributes.push_back(attribute);
  return model;
}

std::vector<double> weightsOf(const AttributeModel& attribute) {
  std::vector<double> weights;
  for (const WeightedCounts& bin : attribute.bins) weights.push_back(bin.weight);
  return weights;
}

AttributeModel checked(Model model) {
  for (AttributeModel& attribute : model.attributes) dropImpossibleCuts(attribute);
  checkBins(model);
  return model.attributes.front();
}

TEST(BinCheck, WholeBinsStayAsTheyAre) {
  const AttributeModel attribute = checked(cutAt({1.0, kInfinity}, {2.0, 3.0, 4.0}, 9.0));
  EXPECT_THAT(attribute.cutPoints, ElementsAre(1.0, kInfinity));
  EXPECT_THAT(weightsOf(attribute), ElementsAre(2.0, 3.0, 4.0));
  EXPECT_EQ(attribute.status.severity, Severity::Ok);
  EXPECT_EQ(attribute.status.reason, "");
  EXPECT_EQ(attribute.unbinnedCases.weight, 0.0);
}

TEST(BinCheck, ACutThatIsNoNumberIsNone) {
  const AttributeModel attribute = checked(cutAt({kNaN}, {2.0, 3.0}, 5.0));
  EXPECT_TRUE(attribute.cutPoints.empty());
  EXPECT_THAT(weightsOf(attribute), ElementsAre(5.0));
  EXPECT_EQ(attribute.status.severity, Severity::Warning);
  EXPECT_EQ(attribute.status.reason,
            "not cut: the middle of two values is no number or too large for one");
}

TEST(BinCheck, CutsThatDoNotAscendAreNone) {
  const AttributeModel attribute =
      checked(cutAt({-kInfinity, 1.0, -kInfinity, kInfinity, 2.0, kNaN, kInfinity, kNaN},
                    {1, 2, 3, 4, 5, 6, 7, 8, 9}, 45.0));
  EXPECT_THAT(attribute.cutPoints, ElementsAre(-kInfinity, 1.0, 2.0, kInfinity));
  EXPECT_THAT(weightsOf(attribute), ElementsAre(1.0, 2.0, 12.0, 13.0, 17.0));
  EXPECT_EQ(attribute.status.reason,
            "a cut is left out: the middle of two values is no number or too large for one; 5 bins "
            "in place of 9: the values are too few or too unevenly spread");
}

TEST(BinCheck, FewerBinsThanAskedForAreSaid) {
  Model model = cutAt({1.0}, {2.0, 3.0}, 5.0);
  model.options.bins = 4;
  EXPECT_EQ(checked(model).status.reason,
            "2 bins in place of 4: the values are too few or too unevenly spread");
  model.method = Method::Supervised;
  EXPECT_EQ(checked(model).status.reason, "");
}

TEST(BinCheck, WeightCountedInAnotherBinIsSaid) {
  Model model = cutAt({1.0}, {2.0, 3.0}, 5.0);
  model.attributes[0].miscountedWeight = 2.0;
  EXPECT_EQ(checked(model).status.reason,
            "weight 2 is counted in another bin than it lies in: a cut fell on a value");
  model = cutAt({1.0}, {1e300, 1e300}, 2e300);
  model.attributes[0].miscountedWeight = 1e285;  // what sums of this size may lose
  EXPECT_EQ(checked(model).status.reason, "");
  EXPECT_EQ(checked(model).miscountedWeight, 0.0);
}

TEST(BinCheck, WeightInNoBinIsFiledAndSaidBehindOtherRemarks) {
  Model model = cutAt({1.0}, {2.0, 3.0}, 9.5);
  model.attributes[0].status = {120002, Severity::Warning, "something"};
  const AttributeModel attribute = checked(model);
  EXPECT_EQ(attribute.unbinnedCases.weight, 4.5);
  EXPECT_EQ(attribute.status.code, 120002);
  EXPECT_EQ(attribute.status.reason, "something; weight 4.5 lies in no bin");
}

TEST(BinCheck, TheClassesOfUnbinnedCasesCountInTheEntropyBefore) {
  Model model = testing::exampleModel();
  model.attributes.resize(1);
  AttributeModel& given = model.attributes.front();
  // Two cases of each class beside bins and missing cases.
  model.target->classWeights = {7.0, 10.0};
  given.totalWeight = 14.0;
  const AttributeModel attribute = checked(model);
  EXPECT_EQ(attribute.unbinnedCases.weight, 4.0);
  EXPECT_THAT(attribute.unbinnedCases.classWeights, ElementsAre(2.0, 2.0));
  EXPECT_EQ(attribute.entropyBefore, entropyOf({6.0, 8.0}));
}

TEST(BinCheck, WhatRoundingMakesIsNotSaid) {
  EXPECT_EQ(checked(cutAt({1.0}, {1e300, 1e300}, 2e300 * (1 + 1e-15))).status.reason, "");
  EXPECT_NE(checked(cutAt({1.0}, {1e300, 1e300}, 2e300 * (1 + 1e-13))).status.reason, "");
  EXPECT_NE(checked(cutAt({1.0}, {1e15, 1e15}, 2e15 + 1.0)).status.reason, "");
}

}  // namespace
}  // namespace mcbin
