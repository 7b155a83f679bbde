#include "toolkit/fit/bin_limits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace mcbin {
namespace {

using ::testing::ElementsAre;

/// A model of one attribute that is cut at 1, 2, ... into bins with these weights of two classes.
Model cutInto(const std::vector<std::vector<double>>& classWeights, const BinLimits& limits) {
  Model model;
  model.target = TargetModel{"t", {"a", "b"}, {}, {0.0, 0.0}, 0.0};
  model.options.limits = limits;
  AttributeModel attribute;
  for (const auto& weights : classWeights) {
    if (!attribute.bins.empty()) {
      attribute.cutPoints.push_back(static_cast<double>(attribute.bins.size()));
    }
    attribute.bins.push_back({weights[0] + weights[1], weights});
    attribute.totalWeight += weights[0] + weights[1];
  }
  attribute.entropyAfter = -1.0;
  model.attributes.push_back(attribute);
  return model;
}

AttributeModel joinedBins(Model model) {
  joinBins(model);
  return model.attributes.front();
}

TEST(BinLimits, WithoutLimitsNothingChanges) {
  const AttributeModel attribute = joinedBins(cutInto({{1, 0}, {0, 1}, {1, 1}}, {}));
  EXPECT_THAT(attribute.cutPoints, ElementsAre(1.0, 2.0));
  EXPECT_EQ(attribute.entropyAfter, -1.0);
  EXPECT_EQ(attribute.status.reason, "");
}

TEST(BinLimits, JoinsThePairThatLosesTheLeast) {
  BinLimits limits;
  limits.maxBins = 3;
  const AttributeModel attribute = joinedBins(cutInto({{10, 0}, {0, 10}, {6, 4}, {5, 5}}, limits));
  EXPECT_THAT(attribute.cutPoints, ElementsAre(1.0, 2.0));
  EXPECT_THAT(attribute.bins[2].classWeights, ElementsAre(11.0, 9.0));
  EXPECT_DOUBLE_EQ(*attribute.entropyAfter, 0.5 * entropyOf({11.0, 9.0}));
  EXPECT_EQ(attribute.status.reason, "4 bins joined into 3: more than 3 bins");
  EXPECT_EQ(attribute.status.severity, Severity::Warning);
}

TEST(BinLimits, OfEqualPairsTheLowerIsJoined) {
  BinLimits limits;
  limits.maxBins = 2;
  EXPECT_THAT(joinedBins(cutInto({{2, 2}, {2, 2}, {2, 2}}, limits)).cutPoints, ElementsAre(2.0));
  const auto mirrored = cutInto({{900, 100}, {200, 800}, {900, 100}}, limits);
  EXPECT_THAT(joinedBins(mirrored).cutPoints, ElementsAre(2.0));
}

TEST(BinLimits, LightBinsAreJoined) {
  BinLimits limits;
  limits.minShare = 0.1;
  const auto weights = std::vector<std::vector<double>>{{50, 0}, {1, 8}, {0, 41}};
  EXPECT_EQ(joinedBins(cutInto(weights, limits)).status.reason,
            "3 bins joined into 2: under 10% of the weight");
  limits = {};
  limits.minWeight = 10.0;
  EXPECT_EQ(joinedBins(cutInto(weights, limits)).status.reason,
            "3 bins joined into 2: under weight 10");
}

TEST(BinLimits, MissingCasesCountInTheShare) {
  BinLimits limits;
  limits.minShare = 0.1;
  Model model = cutInto({{10, 0}, {0, 10}}, limits);
  EXPECT_EQ(joinedBins(model).bins.size(), 2U);
  model.attributes[0].missingCases = {980.0, {490.0, 490.0}};
  EXPECT_EQ(joinedBins(model).status.reason,
            "2 bins joined into 1: under 10% of the weight; one bin is left, under 10% of the "
            "weight");
}

TEST(BinLimits, ABinThatJustHasTheShareStays) {
  BinLimits limits;
  limits.minShare = 0.07;  // 100 times it is more than 7
  EXPECT_EQ(joinedBins(cutInto({{7, 0}, {0, 93}}, limits)).bins.size(), 2U);
  EXPECT_EQ(joinedBins(cutInto({{6, 0}, {0, 94}}, limits)).status.reason,
            "2 bins joined into 1: under 7% of the weight");
}

TEST(BinLimits, AnUncutColumnThatBreaksALimitIsSaid) {
  BinLimits limits;
  limits.minWeight = 10.0;
  EXPECT_EQ(joinedBins(cutInto({{4, 5}}, limits)).status.reason,
            "one bin is left, under weight 10");
}

TEST(BinLimits, GivenCutPointsStay) {
  BinLimits limits;
  limits.maxBins = 2;
  Model model = cutInto({{1, 0}, {0, 1}, {1, 0}}, limits);
  model.attributes[0].cutsGiven = true;
  EXPECT_EQ(joinedBins(model).bins.size(), 3U);
}

TEST(BinLimits, AnEarlierRemarkStays) {
  BinLimits limits;
  limits.maxBins = 1;
  Model model = cutInto({{1, 0}, {0, 1}}, limits);
  model.attributes[0].status.reason = "odd";
  EXPECT_EQ(joinedBins(model).status.reason, "odd; 2 bins joined into 1: more than 1 bins");
}

/// The same by the rule alone: every pair is tried again in every step.
Model plainlyJoined(Model model) {
  AttributeModel& attribute = model.attributes[0];
  const BinLimits& limits = model.options.limits;
  const auto entropy = [](const WeightedCounts& bin) {
    return bin.weight * entropyOf(bin.classWeights);
  };
  while (attribute.bins.size() > 1) {
    bool isBroken = limits.maxBins > 0 && attribute.bins.size() > std::size_t(limits.maxBins);
    for (const WeightedCounts& bin : attribute.bins) {
      isBroken = isBroken || bin.weight < limits.minWeight ||
                 bin.weight / attribute.totalWeight < limits.minShare;
    }
    if (!isBroken) break;
    std::size_t best = 0;
    double least = 0.0;
    for (std::size_t i = 0; i + 1 < attribute.bins.size(); ++i) {
      const WeightedCounts &a = attribute.bins[i], &b = attribute.bins[i + 1];
      const WeightedCounts both = {
          a.weight + b.weight,
          {a.classWeights[0] + b.classWeights[0], a.classWeights[1] + b.classWeights[1]}};
      const double loss = entropy(both) - (entropy(a) + entropy(b));
      if (i == 0 || loss < least) {
        best = i;
        least = loss;
      }
    }
    const auto at = static_cast<std::ptrdiff_t>(best);
    attribute.bins[best].weight += attribute.bins[best + 1].weight;
    for (std::size_t c = 0; c < 2; ++c) {
      attribute.bins[best].classWeights[c] += attribute.bins[best + 1].classWeights[c];
    }
    attribute.bins.erase(attribute.bins.begin() + at + 1);
    attribute.cutPoints.erase(attribute.cutPoints.begin() + at);
  }
  return model;
}

TEST(BinLimits, AgreesWithThePlainRule) {
  constexpr unsigned kSeed = 20261122;
  std::mt19937 dice(kSeed);
  RecordProperty("seed", static_cast<int>(kSeed));
  std::uniform_int_distribution<int> small(0, 9);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::vector<double>> weights;
    for (int bin = 0; bin < 2 + small(dice) * 3; ++bin) {
      weights.push_back({1.0 + small(dice), static_cast<double>(small(dice))});
    }
    BinLimits limits;
    if (round % 3 == 0) limits.maxBins = 2 + small(dice);
    if (round % 3 == 1) limits.minShare = 0.02 * small(dice);
    if (round % 2 == 0) limits.minWeight = 2.0 * small(dice);
    const Model model = cutInto(weights, limits);
    const AttributeModel found = joinedBins(model);
    const Model expected = plainlyJoined(model);
    ASSERT_EQ(found.cutPoints, expected.attributes[0].cutPoints) << "seed " << kSeed;
    for (std::size_t bin = 0; bin < found.bins.size(); ++bin) {
      ASSERT_EQ(found.bins[bin].classWeights, expected.attributes[0].bins[bin].classWeights);
    }
  }
}

}  // namespace
}  // namespace mcbin
