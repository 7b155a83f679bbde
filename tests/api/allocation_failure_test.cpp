// Every allocation inside a factory or an output is made to fail in turn.
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "mcbinning/factories.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "support/failing_allocation.h"

namespace {

using mcbinning_tests::FailAfter;
using mcbinning_tests::FailOnce;

BINVarList attributeAndTarget() {
  BINVarList list;
  list.AddContVar("x", std::string(100, 'x'), IBINVariable::AttributeRole);
  list.AddCatVar("t", "", std::vector<double>{1.0, 2.0}, IBINVariable::TargetRole);
  return list;
}

template <typename Fault, typename Create>
void expectCleanRefusals(Create create) {
  int failures = 0;
  for (long count = 1;; ++count) {
    MCBinning::MCStatus status;
    bool hasAlgorithm = false;
    bool hasFailed = false;
    {
      Fault fault(count);
      hasAlgorithm = create(status);
      hasFailed = fault.HasFailed();
    }
    EXPECT_EQ(hasAlgorithm, !hasFailed);
    EXPECT_TRUE(status == (hasFailed ? MCBinning::MCStatus(3, false) : MCBinning::MCStatus()));
    if (!hasFailed) {
      break;
    }
    ++failures;
  }
  EXPECT_GT(failures, 2);
}

TEST(FactoryAllocationFailureTest, SupervisedFactoryEndsWithStatusThree) {
  BINSettings settings;
  settings.SetTempDirName(std::string(100, 'd'));
  BINVarList list = attributeAndTarget();
  const auto create = [&](MCBinning::MCStatus& status) {
    BINFactory factory;
    const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, list));
    status = factory.GetStatus();
    return algorithm != nullptr;
  };
  expectCleanRefusals<FailOnce>(create);
  expectCleanRefusals<FailAfter>(create);
}

TEST(FactoryAllocationFailureTest, EqualFrequencyFactoryEndsWithStatusThree) {
  EFBINSettings settings;
  settings.SetTempDirName(std::string(100, 'd'));
  BINVarList list = attributeAndTarget();
  const auto create = [&](MCBinning::MCStatus& status) {
    EFBINFactory factory;
    const std::unique_ptr<IEFBINAlgorithm> algorithm(factory.CreateEFBINAlgorithm(settings, list));
    status = factory.GetStatus();
    return algorithm != nullptr;
  };
  expectCleanRefusals<FailOnce>(create);
  expectCleanRefusals<FailAfter>(create);
}

TEST(OutputAllocationFailureTest, RecordIsFoundBothWaysOrNotAtAll) {
  const std::set<double> cutPoints = {1.0};
  const std::vector<double> counts = {1.0, 2.0};
  int failures = 0;
  for (long count = 1;; ++count) {
    BINOutput output;
    output.SetAttributeTargetResults({}, cutPoints, counts, 0, 1, 2, 3, 3, 0, 2, 0);
    bool hasFailed = false;
    {
      const FailOnce fault(count);
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
  for (long count = 1;; ++count) {
    Output target(before);
    bool hasFailed = false;
    {
      const FailOnce fault(count);
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
