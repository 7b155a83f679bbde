// The pass and the tables when memory cannot be had.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "data/column_buffer.h"
#include "support/allocation_hooks.h"
#include "support/table_run.h"
#include "system/limited_process.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::SortedRows;
using mcbinning_tests::FileOperation;
using mcbinning_tests::LargeAllocationsFail;
using mcbinning_tests::TableRun;

using Rows = std::vector<std::vector<double>>;

class AllocationFailureTest : public testing::Test {
 protected:
  AllocationFailureTest() {
    list_.AddContVar("x", "", IBINVariable::AttributeRole);
    list_.AddCatVar("t", "", 3, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
  }

  BINVarList list_;
};

constexpr std::size_t kFullBuffer = 2 * 10000 * sizeof(double);

TEST_F(AllocationFailureTest, TheBufferIsHalvedOnce) {
  TableRun run(list_, Rows(10001, {1, 2}));
  {
    const LargeAllocationsFail limit(kFullBuffer - 1);
    EXPECT_TRUE(run.Prepare().IsOK());
  }
  EXPECT_EQ(run.files.Calls(FileOperation::Close), 2 * 3U);  // after 5000, 10000 and 10001 cases
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.GetNRows(), 10001U);
}

TEST_F(AllocationFailureTest, WithoutHalfTheBufferThePassEndsWith3) {
  TableRun run(list_, Rows(3, {1, 2}));
  {
    const LargeAllocationsFail limit(kFullBuffer / 2 - 1);
    EXPECT_EQ(run.Prepare(), MCStatus(3, false));
  }
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_EQ(run.files.Calls(FileOperation::Probe), 0U);
}

TEST_F(AllocationFailureTest, RowsThatFindNoMemoryGive3AndCanBeBuiltLater) {
  TableRun run(list_, Rows(20000, {1, 2}));
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  // With the lesser limit a column finds no memory, with the greater one the rows.
  for (const std::size_t bytes : {100000U, 200000U}) {
    const LargeAllocationsFail limit(bytes);
    EXPECT_EQ(run.table.BuildSupervisedTable(0, 1, rows), MCStatus(3, false));
    EXPECT_EQ(run.table.BuildUnsupervisedTable(0, rows), MCStatus(3, false));
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(run.table.GetNRows(), 0U);
    EXPECT_EQ(run.table.GetTotalWeight(), 0.0);
  }
  EXPECT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.GetNRows(), 20000U);
}

TEST_F(AllocationFailureTest, LeavingNeedsNeitherMemoryNorAFileHandle) {
  TableRun run(list_, Rows(3, {1, 2}));
  ASSERT_TRUE(run.Prepare().IsOK());
  ASSERT_FALSE(run.directory.IsEmpty());
  {
    const mcbinning_tests::WithoutFileHandles noHandles;
    const LargeAllocationsFail noMemory(0);
    EXPECT_EQ(run.Prepare(), MCStatus(3, false));
  }
  EXPECT_TRUE(run.directory.IsEmpty());
}

TEST_F(AllocationFailureTest, ABufferWithoutMemoryHasNoColumns) {
  MCBinning::ColumnBuffer buffer;
  ASSERT_TRUE(buffer.Allocate(1, 1));
  const LargeAllocationsFail limit(1000);
  EXPECT_FALSE(buffer.Allocate(2, 100));
  EXPECT_EQ(buffer.Columns(), 0U);
  EXPECT_FALSE(buffer.Append(0, 1.0));
}

}  // namespace
