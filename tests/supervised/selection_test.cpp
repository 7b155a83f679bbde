#include "supervised/pair_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace MCBinning {
namespace {

using testing::ElementsAre;

/// Indexes: 0 and 1 scale attributes, 2 the target, 3 a string category, 4 the weight, 5 a scale
/// variable of no role.
class PairSelectionTest : public testing::Test {
 protected:
  PairSelectionTest() {
    list_.AddContVar("a", "", IBINVariable::AttributeRole);
    list_.AddContVar("b", "", IBINVariable::AttributeRole);
    list_.AddCatVar("t", "", 2, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
    list_.AddCatVar("s", "", 2, IBINVariable::StringCategoricalLevel, IBINVariable::AttributeRole);
    list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
    list_.AddContVar("c", "", IBINVariable::UndefinedRole);
  }

  bool Check(const std::vector<int>* attributes, const std::vector<int>* targets) {
    return CheckPairs({attributes, targets}, list_, list_.GetTargetIndex(), list_.GetWeightIndex(),
                      statuses_);
  }
  bool CheckTwo(const std::vector<int>& attributes, const std::vector<int>& targets) {
    return Check(&attributes, &targets);
  }
  bool CheckOne(const std::vector<int>& attributes) { return Check(&attributes, nullptr); }

  BINVarList list_;
  std::vector<MCStatus> statuses_;
};

TEST_F(PairSelectionTest, BothCategoricalLevelsAreTargets) {
  EXPECT_TRUE(CheckTwo({0, 1, 2}, {2, 3, 3}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(), MCStatus(), MCStatus()));
}

TEST_F(PairSelectionTest, TargetsAloneAreRefused) {
  const std::vector<int> targets = {2};
  EXPECT_FALSE(Check(nullptr, &targets));
}

TEST_F(PairSelectionTest, ListsOfDifferentLengthsAreRefused) {
  EXPECT_FALSE(CheckTwo({0, 1}, {2}));
  EXPECT_FALSE(CheckTwo({0}, {2, 3}));
  EXPECT_FALSE(CheckTwo({}, {2}));
}

TEST_F(PairSelectionTest, EmptySelectionsAreRefused) {
  EXPECT_FALSE(CheckTwo({}, {}));
  EXPECT_FALSE(CheckOne({}));
}

TEST_F(PairSelectionTest, RefusedPairsKeepTheirReasonBesideAGoodOne) {
  EXPECT_TRUE(CheckTwo({0, -1, 6, 0, 0, 0, 2, 4, 0, 4}, {2, 2, 2, -1, 6, 1, 2, 2, 4, 1}));
  const MCStatus outOfRange(120013, false);
  const MCStatus notCategorical(120006, false);
  const MCStatus badPair(120005, false);
  EXPECT_THAT(statuses_,
              ElementsAre(MCStatus(), outOfRange, outOfRange, outOfRange, outOfRange,
                          notCategorical, badPair, badPair, notCategorical, notCategorical));
}

TEST_F(PairSelectionTest, TwoListsWithEveryPairRefusedAreRefused) {
  EXPECT_FALSE(CheckTwo({0, 2}, {1, 2}));
}

TEST_F(PairSelectionTest, AttributesAloneKeepTheirReasonAndAreNeverAllRefused) {
  EXPECT_TRUE(CheckOne({-1, 6, 2, 4}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(120011, false), MCStatus(120011, false),
                                     MCStatus(120005, false), MCStatus(120005, false)));
  EXPECT_TRUE(CheckOne({0, 3, 5}));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(), MCStatus(), MCStatus()));
}

TEST_F(PairSelectionTest, WeightVariableAsCategoricalTargetIsRefusedByItsIndex) {
  // The index given decides, not the variable's level.
  const std::vector<int> attributes = {0, 1};
  const std::vector<int> targets = {3, 2};
  EXPECT_TRUE(CheckPairs({&attributes, &targets}, list_, 2, 3, statuses_));
  EXPECT_THAT(statuses_, ElementsAre(MCStatus(120005, false), MCStatus()));
}

}  // namespace
}  // namespace MCBinning
