#include "supervised/selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace MCBinning {
namespace {

using testing::ElementsAre;

std::vector<MCStatus> statusesOf(const std::vector<Request>& requests) {
  std::vector<MCStatus> statuses;
  for (const Request& request : requests) {
    statuses.push_back(request.status);
  }
  return statuses;
}

/// Indexes: 0 and 1 scale attributes, 2 the target, 3 a string category, 4 the weight, 5 a scale
/// variable of no role.
class SelectionTest : public testing::Test {
 protected:
  SelectionTest() {
    list_.AddContVar("a", "", IBINVariable::AttributeRole);
    list_.AddContVar("b", "", IBINVariable::AttributeRole);
    list_.AddCatVar("t", "", 2, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
    list_.AddCatVar("s", "", 2, IBINVariable::StringCategoricalLevel, IBINVariable::AttributeRole);
    list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
    list_.AddContVar("c", "", IBINVariable::UndefinedRole);
  }

  bool Check(const std::vector<int>* attributes, const std::vector<int>* targets) {
    return Check({attributes, targets}, list_.GetTargetIndex(), list_.GetWeightIndex());
  }
  bool Check(const Selection& selection, int target, int weight) {
    std::vector<Request> requests;
    const bool isOfUse = requestPairs(selection, list_, target, weight, requests);
    statuses_ = statusesOf(requests);
    return isOfUse;
  }
  bool CheckTwo(const std::vector<int>& attributes, const std::vector<int>& targets) {
    return Check(&attributes, &targets);
  }
  bool CheckOne(const std::vector<int>& attributes) { return Check(&attributes, nullptr); }

  BINVarList list_;
  std::vector<MCStatus> statuses_;
};

TEST_F(SelectionTest, BothCategoricalLevelsAreTargets) {
  EXPECT_TRUE(CheckTwo({0, 1, 2}, {2, 3, 3}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(), MCStatus(), MCStatus()));
}

TEST_F(SelectionTest, TargetsAloneAreRefused) {
  const std::vector<int> targets = {2};
  EXPECT_FALSE(Check(nullptr, &targets));
}

TEST_F(SelectionTest, ListsOfDifferentLengthsAreRefused) {
  EXPECT_FALSE(CheckTwo({0, 1}, {2}));
  EXPECT_FALSE(CheckTwo({0}, {2, 3}));
  EXPECT_FALSE(CheckTwo({}, {2}));
}

TEST_F(SelectionTest, EmptySelectionsAreRefused) {
  EXPECT_FALSE(CheckTwo({}, {}));
  EXPECT_FALSE(CheckOne({}));
}

TEST_F(SelectionTest, RefusedPairsKeepTheirReasonBesideAGoodOne) {
  EXPECT_TRUE(CheckTwo({0, -1, 6, 0, 0, 0, 2, 4, 0, 4}, {2, 2, 2, -1, 6, 1, 2, 2, 4, 1}));
  const MCStatus outOfRange(120013, false);
  const MCStatus notCategorical(120006, false);
  const MCStatus badPair(120005, false);
  EXPECT_THAT(statuses_,
              ElementsAre(MCStatus(), outOfRange, outOfRange, outOfRange, outOfRange,
                          notCategorical, badPair, badPair, notCategorical, notCategorical));
}

TEST_F(SelectionTest, TwoListsWithEveryPairRefusedAreRefused) {
  EXPECT_FALSE(CheckTwo({0, 2}, {1, 2}));
}

TEST_F(SelectionTest, AttributesAloneKeepTheirReasonAndAreNeverAllRefused) {
  EXPECT_TRUE(CheckOne({-1, 6, 2, 4}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(120011, false), MCStatus(120011, false),
                                     MCStatus(120005, false), MCStatus(120005, false)));
  EXPECT_TRUE(CheckOne({0, 3, 5}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(), MCStatus(), MCStatus()));
}

TEST_F(SelectionTest, WeightVariableAsCategoricalTargetIsRefusedByItsIndex) {
  // The index given decides, not the variable's level.
  const std::vector<int> attributes = {0, 1};
  const std::vector<int> targets = {3, 2};
  EXPECT_TRUE(Check({&attributes, &targets}, 2, 3));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(120005, false), MCStatus()));
}

TEST_F(SelectionTest, EachRequestNamesItsAttributeAndTheTargetOrItsOwn) {
  const std::vector<int> attributes = {0, 3};
  const std::vector<int> targets = {3, 2};
  std::vector<Request> requests;
  requestPairs({&attributes, nullptr}, list_, 2, 4, requests);
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[1].attribute, 3);
  EXPECT_EQ(requests[1].target, 2);
  requestPairs({&attributes, &targets}, list_, 2, 4, requests);
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].attribute, 0);
  EXPECT_EQ(requests[0].target, 3);
}

TEST_F(SelectionTest, TheWholeListLeavesOutTargetAndWeight) {
  std::vector<int> attributes;
  for (const Request& request : requestAll(list_, 2, 4)) {
    EXPECT_EQ(request.target, 2);
    EXPECT_TRUE(request.status.IsOK());
    attributes.push_back(request.attribute);
  }
  EXPECT_THAT(attributes, ElementsAre(0, 1, 3, 5));
  EXPECT_EQ(requestAll(list_, kNoTarget, -1).size(), 6U);
}

TEST_F(SelectionTest, WithoutATargetAnyVariableButTheWeightIsAnAttribute) {
  std::vector<Request> requests;
  EXPECT_TRUE(requestAttributes({2, 4, -1, 6}, list_, 4, requests));
  EXPECT_THAT(statusesOf(requests), ElementsAre(MCStatus(), MCStatus(120005, false),
                                                MCStatus(120011, false), MCStatus(120011, false)));
  EXPECT_EQ(requests[0].target, kNoTarget);
  EXPECT_FALSE(requestAttributes({4, 6}, list_, 4, requests));
  EXPECT_FALSE(requestAttributes({}, list_, 4, requests));
}

}  // namespace
}  // namespace MCBinning
