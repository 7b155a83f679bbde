// Every allocation inside a run of the equal-frequency algorithm is made to fail in turn.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "mcbinning/factories.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "support/failing_allocation.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::VectorCases;

const std::vector<std::vector<double>> kRows = {{1, 1}, {2, 1}, {3, 1}, {4, 1}};

void expectHalves(const std::vector<BINAttributeResults>& records) {
  for (const auto& record : records) {
    if (record.GetStatus().IsOK()) {
      EXPECT_EQ(record.GetCutPoints(), std::vector<double>{2.5});
      EXPECT_EQ(record.GetCellCounts(), (std::vector<double>{2, 2}));
    } else {
      const long code = record.GetAttributeIndex() < 0 ? 120011 : 3;
      EXPECT_TRUE(record.GetStatus() == MCStatus(code, false));
    }
  }
}

// False once the run needed fewer allocations than `count`.
template <typename Fault>
bool runWithFailure(long count) {
  const ScratchDirectory directory;
  EFBINSettings settings;
  settings.SetNumberOfBins(2);
  settings.SetTempDirName(directory.Path());
  BINVarList list;
  list.AddContVar("x", "", IBINVariable::AttributeRole);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(factory.CreateEFBINAlgorithm(settings, list));
  const std::vector<int> attributes = {-1, 0};
  VectorCases cases(kRows);
  MCStatus status;
  bool hasFailed = false;
  {
    const Fault fault(count);
    status = algorithm->Run(cases, &attributes);
    hasFailed = fault.HasFailed();
  }
  std::vector<BINAttributeResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  expectHalves(records);
  if (!hasFailed) {
    EXPECT_TRUE(status == MCStatus(120018, true));
    EXPECT_EQ(records.size(), 2U);
    return false;
  }
  // What a failed allocation spoils is either the run or the record of the attribute. Some
  // allocations are only a wish for speed.
  EXPECT_TRUE(status == MCStatus(3, false) || records.size() == 2) << status.GetErrorCode();
  EXPECT_TRUE(!(status == MCStatus(3, false)) || directory.IsEmpty());

  VectorCases again(kRows);
  EXPECT_TRUE(algorithm->Run(again, &attributes) == MCStatus(120018, true));
  algorithm->GetOutput()->GetAllCutPoints(records);
  expectHalves(records);
  EXPECT_TRUE(records.back().GetStatus().IsOK());
  return true;
}

TEST(EFAllocationFailureTest, OneAllocationFails) {
  long count = 1;
  while (runWithFailure<mcbinning_tests::FailOnce>(count)) {
    ++count;
  }
  EXPECT_GT(count, 10);
}

TEST(EFAllocationFailureTest, AllAllocationsFailFromOneOn) {
  long count = 1;
  while (runWithFailure<mcbinning_tests::FailAfter>(count)) {
    ++count;
  }
  EXPECT_GT(count, 10);
}

}  // namespace
