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

std::string textOf(const EFBINOutput& output) {
  std::ostringstream os;
  output.Display(os);
  return os.str();
}

template <typename Output>
void expectStrongAssignment(const Output& before, const Output& source) {
  int failures = 0;
  for (std::size_t call = 1;; ++call) {
    Output target(before);
    bool hasFailed = false;
    {
      const OneAllocationFails fault(call);
      try {
        target = source;
      } catch (const std::bad_alloc&) {
        hasFailed = true;
      }
    }
    EXPECT_EQ(textOf(target), textOf(hasFailed ? before : source));
    if (!hasFailed) {
      break;
    }
    ++failures;
  }
  EXPECT_GT(failures, 3);
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

}  // namespace
