// Every allocation inside an output is made to fail in turn.
#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "mcbinning/outputs.h"
#include "support/allocation_hooks.h"

namespace {

using mcbinning_tests::OneAllocationFails;

TEST(OutputAllocationFailureTest, RecordIsFoundBothWaysOrNotAtAll) {
  const std::set<double> cutPoints = {1.0};
  const std::vector<double> counts = {1.0, 2.0};
  int failures = 0;
  for (std::size_t call = 1;; ++call) {
    BINOutput output;
    output.SetAttributeTargetResults({}, cutPoints, counts, 0, 1, 2, 3, 3, 0, 2, 0);
    bool hasFailed = false;
    {
      const OneAllocationFails fault(call);
      try {
        output.SetAttributeTargetResults({}, cutPoints, counts, 5, 1, 2, 3, 3, 0, 2, 0);
      } catch (const std::bad_alloc&) {
        hasFailed = true;
      }
    }
    std::vector<BINAttributeTargetResults> records;
    BINAttributeTargetResults record;
    output.GetAllCutPoints(records);
    EXPECT_EQ(records.size(), hasFailed ? 1U : 2U);
    EXPECT_EQ(output.GetAttributeTargetCutPoints(5, 1, record).IsOK(), !hasFailed);
    EXPECT_TRUE(output.GetAttributeTargetCutPoints(0, 1, record).IsOK());
    if (!hasFailed) {
      break;
    }
    ++failures;
  }
  EXPECT_GT(failures, 3);
}

std::string textOf(const BINOutput& output) {
  std::ostringstream os;
  output.Display(os);
  BINAttributeTargetResults record;
  for (int attribute = 0; attribute < 4; ++attribute) {
    os << output.GetAttributeTargetCutPoints(attribute, 9, record).GetErrorCode();
    record.Display(os);
  }
  return os.str();
}

template <typename Record>
std::string textOf(const Record& record) {
  std::ostringstream os;
  record.Display(os);
  return os.str();
}

template <typename Record>
std::string textOf(const std::vector<Record>& records) {
  std::string text;
  for (const Record& record : records) {
    text += textOf(record);
  }
  return text;
}

/// Changes copies of `before` with the first, second, ... allocation failing until none fails.
template <typename Object, typename Change>
void expectStrong(const Object& before, Change change) {
  Object after(before);
  change(after);
  int failures = 0;
  for (std::size_t call = 1;; ++call) {
    Object object(before);
    bool hasFailed = false;
    {
      const OneAllocationFails fault(call);
      try {
        change(object);
      } catch (const std::bad_alloc&) {
        hasFailed = true;
      }
    }
    EXPECT_EQ(textOf(object), textOf(hasFailed ? before : after)) << "allocation " << call;
    if (!hasFailed) {
      break;
    }
    ++failures;
  }
  EXPECT_NE(textOf(after), textOf(before));
  EXPECT_GT(failures, 1);
}

template <typename Output>
void expectStrongAssignment(const Output& before, const Output& source) {
  expectStrong(before, [&](Output& target) { target = source; });
}

TEST(OutputAllocationFailureTest, AssignmentThatThrowsChangesNothing) {
  BINOutput pairs;
  BINOutput otherPairs;
  EFBINOutput attributes;
  EFBINOutput otherAttributes;
  for (int i = 0; i < 2; ++i) {
    const double first = i;
    pairs.SetAttributeTargetResults({}, {first}, {1, 2}, i, 9, 2, 3, 3, 0, 2, 0);
    otherPairs.SetAttributeTargetResults({}, {5.0, 6.0}, {1, 2, 3}, 3 - i, 9, 2, 3, 3, 0, 2, 0);
    attributes.SetAttributeResults({}, {first}, {1, 2}, i, 2, 3, 3, 0, 2);
    otherAttributes.SetAttributeResults({}, {5.0, 6.0}, {1, 2, 3}, 3 - i, 2, 3, 3, 0, 2);
  }
  expectStrongAssignment(pairs, otherPairs);
  expectStrongAssignment(attributes, otherAttributes);
}

TEST(OutputAllocationFailureTest, QueryThatThrowsLeavesTheCallersArgument) {
  BINOutput pairs;
  EFBINOutput attributes;
  for (int i = 0; i < 3; ++i) {
    pairs.SetAttributeTargetResults({}, {1.0, 2.0}, {1, 2, 3}, 0, 7 + i, 2, 3, 3, 0, 2, 0);
    attributes.SetAttributeResults({}, {1.0, 2.0}, {1, 2, 3}, i, 2, 3, 3, 0, 2);
  }
  BINAttributeTargetResults pair;
  BINAttributeResults attribute;
  EXPECT_TRUE(pairs.GetAttributeTargetCutPoints(0, 9, pair).IsOK());
  EXPECT_TRUE(attributes.GetAttributeCutPoints(2, attribute).IsOK());
  expectStrong(BINAttributeTargetResults(),
               [&](auto& out) { pairs.GetAttributeTargetCutPoints(0, 8, out); });
  expectStrong(BINAttributeResults(), [&](auto& out) { attributes.GetAttributeCutPoints(1, out); });
  expectStrong(std::vector{pair}, [&](auto& out) { pairs.GetAllCutPoints(out); });
  expectStrong(std::vector{pair}, [&](auto& out) { pairs.GetAttributeCutPoints(0, out); });
  expectStrong(std::vector{attribute}, [&](auto& out) { attributes.GetAllCutPoints(out); });
}

}  // namespace
