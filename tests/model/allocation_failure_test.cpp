// Every allocation inside a call of the variable model is made to fail in turn.
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "mcbinning/encoders.h"
#include "mcbinning/settings.h"
#include "mcbinning/user_missing.h"
#include "mcbinning/variable_list.h"
#include "support/allocation_hooks.h"
#include "support/display.h"

namespace {

using mcbinning_tests::DisplayOf;
using mcbinning_tests::OneAllocationFails;

constexpr auto kAttribute = IBINVariable::AttributeRole;
constexpr auto kTarget = IBINVariable::TargetRole;
constexpr auto kTruncate = IBINVariable::TruncateToSmallerInt;

const std::string kLong(100, 'x');  // too long to be stored without an allocation
const std::vector<double> kValues = {1.0, 2.0, 3.0};
const std::vector<std::string> kStrings = {kLong + "1", kLong + "2", kLong + "3"};

/// Scale attribute 0, numeric target 1, string attribute 2; full, so that the next one reallocates.
BINVarList MakeList() {
  BINVarList list;
  list.AddContVar(kLong + "age", kLong, kAttribute);
  list.AddCatVar(kLong + "outcome", kLong, kValues, kTarget);
  list.AddCatVar(kLong + "colour", kLong, kStrings, kAttribute);
  list.AddCatVar(kLong + "shape", kLong, kStrings, kAttribute);
  return list;
}

/// All that a list shows: its display, its indexes and its definitions.
std::string StateOf(const BINVarList& list) {
  std::string state = DisplayOf(list) + std::to_string(list.GetWeightIndex());
  for (int i = 0; i < static_cast<int>(list.Size()); ++i) {
    if (const IBINUserMissing* definition = list.GetVarAt(i)->GetUserMissingInfo()) {
      state += DisplayOf(*definition);
    }
  }
  return state;
}

/// Calls `change`, which answers whether it succeeded, on fresh lists with the first, the second,
/// ... allocation failing until it succeeds. A failed call must leave the list as it was.
void ExpectStrong(const BINVarList& start, const std::function<bool(BINVarList&)>& change) {
  const std::string before = StateOf(start);
  int failures = 0;
  for (std::size_t call = 1; call < 1000; ++call) {
    BINVarList list(start);
    bool succeeded = false;
    {
      const OneAllocationFails scope(call);
      succeeded = change(list);
    }
    if (succeeded) {
      EXPECT_NE(StateOf(list), before);
      EXPECT_GT(failures, 0);
      return;
    }
    ++failures;
    ASSERT_EQ(StateOf(list), before) << "allocation " << call << " failed";
  }
  FAIL() << "never succeeded";
}

TEST(AllocationFailureTest, AddersAnswerMinusOneAndKeepTheList) {
  const BINVarList list = MakeList();
  const std::string name = kLong + "new";
  ExpectStrong(list,
               [&](BINVarList& l) { return l.AddCatVar(name, kLong, kValues, kTarget) >= 0; });
  ExpectStrong(list, [&](BINVarList& l) {
    return l.AddCatVar(name, kLong, kValues, kStrings, kTarget) >= 0;
  });
  ExpectStrong(list,
               [&](BINVarList& l) { return l.AddCatVar(name, kLong, kStrings, kTarget) >= 0; });
  ExpectStrong(list, [&](BINVarList& l) {
    return l.AddCatVar(name, kLong, kStrings, kStrings, kTarget) >= 0;
  });
  ExpectStrong(list, [&](BINVarList& l) {
    return l.AddCatVar(name, kLong, 5, IBINVariable::NumericCategoricalLevel, kTarget) >= 0;
  });
  ExpectStrong(list, [&](BINVarList& l) { return l.AddContVar(name, kLong, kAttribute) >= 0; });
  ExpectStrong(list, [&](BINVarList& l) { return l.AddContVars(kStrings, kAttribute) >= 0; });
  ExpectStrong(list, [&](BINVarList& l) { return l.AddWeightVar(name, kLong, kTruncate) >= 0; });
}

TEST(AllocationFailureTest, UserMissingMutatorsAnswerFalseAndKeepTheList) {
  BINVarList list = MakeList();
  list.AddWeightVar("w", "", kTruncate);
  const auto addNumber = [](int index) {
    return [index](BINVarList& l) { return l.AddDiscreteUserMissing(index, 9.0, kLong); };
  };
  const auto addString = [](BINVarList& l) { return l.AddDiscreteUserMissing(2, kLong, kLong); };
  for (int round = 0; round < 3; ++round) {  // a new definition, then one that grows
    for (const int index : {0, 1, 4}) {
      ExpectStrong(list, addNumber(index));
      list.AddDiscreteUserMissing(index, 9.0, kLong);
    }
    ExpectStrong(list, addString);
    list.AddDiscreteUserMissing(2, kLong, kLong);
  }
  ExpectStrong(MakeList(), [](BINVarList& l) { return l.SetMissingInterval(0, 1.0, 2.0); });
}

TEST(AllocationFailureTest, RemovingByNameAnswersFalseAndKeepsTheList) {
  const BINVarList start = MakeList();
  BINVarList list(start);
  std::string name = kLong + "outcome";
  {
    const OneAllocationFails scope(1);
    EXPECT_FALSE(list.RemoveVar(std::move(name)));
  }
  EXPECT_EQ(StateOf(list), StateOf(start));
  EXPECT_TRUE(list.RemoveVar(kLong + "outcome"));
}

TEST(AllocationFailureTest, QueryThatThrowsLeavesTheCallersArguments) {
  BINVarList list = MakeList();
  for (int categories : {0, 1, 0, 1}) {
    list.AddCatVar(std::to_string(list.Size()), "", categories,
                   IBINVariable::NumericCategoricalLevel, kAttribute);
  }
  bool hasNames = false;
  bool hasIndexes = false;
  std::size_t call = 1;
  for (; call < 100 && !(hasNames && hasIndexes); ++call) {
    std::vector<std::string> attributes = {"before"};
    std::string target = "before";
    std::vector<int> single = {99};
    std::vector<int> none = {99};
    try {
      const OneAllocationFails scope(call);
      list.GetVarNames(attributes, target);
      hasNames = true;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(attributes, std::vector<std::string>{"before"});
      EXPECT_EQ(target, "before");
    }
    try {
      const OneAllocationFails scope(call);
      EXPECT_FALSE(list.IsValidList(single, none));
      hasIndexes = true;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(single, std::vector<int>{99});
      EXPECT_EQ(none, std::vector<int>{99});
    }
  }
  EXPECT_TRUE(hasNames && hasIndexes);
  EXPECT_GT(call, 4U);
}

/// Assigns `source` to a copy of `target` with the first, second, ... allocation failing.
template <typename Object>
void ExpectStrongAssignment(const Object& target, const Object& source) {
  const std::string before = DisplayOf(target);
  for (std::size_t call = 1; call < 1000; ++call) {
    Object object(target);
    try {
      const OneAllocationFails scope(call);
      object = source;
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(DisplayOf(object), before) << "allocation " << call << " failed";
      continue;
    }
    EXPECT_GT(call, 1U);
    EXPECT_NE(DisplayOf(object), before);
    return;
  }
  FAIL() << "never succeeded";
}

TEST(AllocationFailureTest, AssignmentsLeaveTheirTargetAsItWas) {
  BINVarList list = MakeList();
  list.AddDiscreteUserMissing(0, 9.0, kLong);
  ExpectStrongAssignment(BINVarList(), list);
  BINVarList other;
  other.AddContVar("x", "", kAttribute);
  ExpectStrongAssignment(other, list);
  BINCatVar categorical(kLong, kLong, 3, IBINVariable::StringCategoricalLevel, kAttribute);
  static_cast<BINStringEncoder&>(*categorical.GetEncoder()).Encode(kLong);
  ExpectStrongAssignment(BINCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel, kTarget),
                         categorical);
  BINContVar scale(kLong, kLong, kAttribute);
  scale.SetUserMissingInfo(new BINNumericUserMissing());
  ExpectStrongAssignment(BINContVar("s", "", kTarget), scale);
  BINWeightVar weight(kLong, kLong, kTruncate);
  weight.SetUserMissingInfo(new BINNumericUserMissing());
  ExpectStrongAssignment(BINWeightVar("w", "", kTruncate), weight);
}

TEST(AllocationFailureTest, AssignmentOfADefinitionOrIntervalLeavesItsTargetAsItWas) {
  BINNumericUserMissing numeric;
  BINStringUserMissing string;
  for (const char* label : {"a", "b", "c"}) {
    numeric.AddValue(1.5, kLong + label);
    string.AddValue(kLong + label, kLong);
  }
  numeric.SetInterval(BINNumericInterval(1.0, 2.0));
  BINNumericUserMissing oneNumber;
  oneNumber.AddValue(9.0, "nine");
  ExpectStrongAssignment(oneNumber, numeric);
  BINStringUserMissing oneString;
  oneString.AddValue("x", "ex");
  ExpectStrongAssignment(oneString, string);
  ExpectStrongAssignment(BINStringInterval("a", true, "b", true),
                         BINStringInterval(kLong + "1", false, kLong + "2", false));
}

/// Sets labels of an encoder of three codes with the first, second, ... allocation failing.
template <typename Set>
void ExpectStrongLabels(const std::vector<std::string>& labels, Set set) {
  for (std::size_t call = 1; call < 1000; ++call) {
    BINCatNumEncoder encoder(kValues);
    encoder.SetValueLabels(labels);
    try {
      const OneAllocationFails scope(call);
      set(encoder);
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(*encoder.GetValueLabels(), labels) << "allocation " << call << " failed";
      continue;
    }
    EXPECT_GT(call, 1U);
    EXPECT_NE(*encoder.GetValueLabels(), labels);
    return;
  }
  FAIL() << "never succeeded";
}

TEST(AllocationFailureTest, SettingLabelsKeepsTheOldOnes) {
  for (const auto& labels : {std::vector<std::string>{}, std::vector<std::string>{"a", "b", "c"}}) {
    ExpectStrongLabels(labels, [](BINCatNumEncoder& e) { e.SetValueLabels(kStrings); });
    ExpectStrongLabels(labels, [](BINCatNumEncoder& e) { e.SetValueLabel(1, kLong); });
  }
}

template <typename Settings>
void ExpectStrongSettingsAssignment() {
  Settings source;
  source.SetNumberOfBins(7);
  source.SetTempDirName(kLong);
  Settings target;
  target.SetTempDirName("short");
  const Settings before(target);
  {
    const OneAllocationFails scope(1);
    EXPECT_THROW(target = source, std::bad_alloc);
  }
  EXPECT_TRUE(target == before);
  EXPECT_EQ(target.GetTempDirName(), "short");
  target = source;
  EXPECT_TRUE(target == source);
}

TEST(AllocationFailureTest, SettingsAssignmentLeavesItsTargetAsItWas) {
  ExpectStrongSettingsAssignment<BINSettings>();
  ExpectStrongSettingsAssignment<EFBINSettings>();
}

template <typename Encoder, typename Value>
void ExpectStrongEncode(Encoder& encoder, const Value& value) {
  const int known = encoder.GetNumberOfCategories();
  for (std::size_t call = 1; call < 10; ++call) {
    try {
      const OneAllocationFails scope(call);
      encoder.Encode(value);
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(encoder.GetNumberOfCategories(), known);
      ASSERT_EQ(encoder.EncodeConst(value), -1.0);
      continue;
    }
    EXPECT_GT(call, 1U);
    ASSERT_EQ(encoder.GetNumberOfCategories(), known + 1);
    ASSERT_EQ(encoder.Decode(known), value);
    return;
  }
  FAIL() << "never succeeded";
}

TEST(AllocationFailureTest, EncodingANewValueKeepsTheEncoder) {
  BINStringEncoder strings(0);
  BINCatNumEncoder numbers(0);
  for (int i = 0; i < 40; ++i) {
    ExpectStrongEncode(strings, kLong + std::to_string(i));
    ExpectStrongEncode(numbers, static_cast<double>(i));
  }
}

}  // namespace
