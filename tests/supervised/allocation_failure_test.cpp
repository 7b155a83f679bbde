// Every allocation inside a run of the supervised algorithm is made to fail in turn.
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

// The first attribute has few distinct values, the second is pre-binned; the last column is the
// target.
const std::vector<std::vector<double>> kRows = {{1, 1, 0}, {1, 2, 0}, {1, 3, 0},
                                                {2, 4, 1}, {2, 5, 1}, {2, 6, 1}};
const std::vector<int> kAttributes = {-1, 0, 1};
const MCStatus kSomePairNotOK(120018, true);

void expectSeparated(const std::vector<BINAttributeTargetResults>& records) {
  for (const auto& record : records) {
    if (record.GetStatus().IsOK()) {
      const double cutPoint = record.GetAttributeIndex() == 0 ? 1.0 : 3.5;
      EXPECT_EQ(record.GetCutPoints(), std::vector<double>{cutPoint});
      EXPECT_EQ(record.GetCellCounts(), (std::vector<std::vector<double>>{{3, 3, 0}, {3, 0, 3}}));
      EXPECT_EQ(record.GetModelEntropy(), 0.0);
    } else {
      const long code = record.GetAttributeIndex() < 0 ? 120011 : 3;
      EXPECT_EQ(record.GetStatus(), MCStatus(code, false));
    }
  }
}

std::unique_ptr<IBINAlgorithm> makeAlgorithm(const ScratchDirectory& directory) {
  BINSettings settings;
  settings.SetNumberOfBins(2);
  settings.SetNumDistinctValueThreshold(2);
  settings.SetSmallBinDetectionThreshold(0.5);
  settings.SetTempDirName(directory.Path());
  BINVarList list;
  list.AddContVar("few", "", IBINVariable::AttributeRole);
  list.AddContVar("many", "", IBINVariable::AttributeRole);
  list.AddCatVar("t", "", 2, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
  BINFactory factory;
  return std::unique_ptr<IBINAlgorithm>(factory.CreateBINAlgorithm(settings, list));
}

// False once the run needed fewer allocations than `count`.
template <typename Fault>
bool runWithFailure(long count) {
  SCOPED_TRACE(count);
  const ScratchDirectory directory;
  const auto algorithm = makeAlgorithm(directory);
  VectorCases cases(kRows);
  MCStatus status;
  bool hasFailed = false;
  {
    const Fault fault(count);
    status = algorithm->Run(cases, &kAttributes, nullptr);
    hasFailed = fault.HasFailed();
  }
  std::vector<BINAttributeTargetResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  expectSeparated(records);
  // What a failed allocation spoils is either the run or the record of a pair. Some allocations are
  // only a wish for speed.
  if (status == MCStatus(3, false)) {
    EXPECT_TRUE(hasFailed);
    EXPECT_TRUE(directory.IsEmpty());
  } else {
    EXPECT_EQ(status, kSomePairNotOK);
    EXPECT_EQ(records.size(), kAttributes.size());
  }

  VectorCases again(kRows);
  EXPECT_EQ(algorithm->Run(again, &kAttributes, nullptr), kSomePairNotOK);
  algorithm->GetOutput()->GetAllCutPoints(records);
  expectSeparated(records);
  EXPECT_TRUE(records.back().GetStatus().IsOK());
  EXPECT_TRUE(records[records.size() - 2].GetStatus().IsOK());
  return hasFailed;
}

TEST(BINAlgorithmAllocationFailureTest, OneAllocationFails) {
  long count = 1;
  while (runWithFailure<mcbinning_tests::FailOnce>(count)) {
    ++count;
  }
  EXPECT_GT(count, 30);
}

TEST(BINAlgorithmAllocationFailureTest, AllAllocationsFailFromOneOn) {
  long count = 1;
  while (runWithFailure<mcbinning_tests::FailAfter>(count)) {
    ++count;
  }
  EXPECT_GT(count, 30);
}

}  // namespace
