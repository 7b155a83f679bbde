#include "data/attribute_table.h"

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "support/table_run.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::SortedRows;
using mcbinning_tests::FileOperation;
using mcbinning_tests::TableRun;

using Rows = std::vector<std::vector<double>>;

const double kMissing = MCMV::gMissingValue;
const double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

MCStatus error(long code) { return MCStatus(code, false); }

MCStatus noColumn(int attribute) {
  MCStatus status(120013, false);
  status.SetDiscreteDatum(0, attribute);
  return status;
}

void addTarget(BINVarList& list, int categories = 256) {
  list.AddCatVar("target", "", categories, IBINVariable::NumericCategoricalLevel,
                 IBINVariable::TargetRole);
}

void addScale(BINVarList& list, const char* name = "x") {
  list.AddContVar(name, "", IBINVariable::AttributeRole);
}

void addWeight(BINVarList& list) { list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt); }

TEST(AttributeTableTest, ABadTargetGives120010AndIsLookedAtFirst) {
  BINVarList list;
  addScale(list);
  addTarget(list, 2);
  addWeight(list);
  list.AddCatVar("unused", "", 9, IBINVariable::NumericCategoricalLevel,
                 IBINVariable::UndefinedRole);
  TableRun run(list, {{3, 2, 1, 0}});  // one code more than the target declares
  ASSERT_TRUE(run.Prepare().IsOK());
  for (const int target : {-1, 0, 1, 2, 3, 4, std::numeric_limits<int>::min()}) {
    SortedRows unrelated;
    SortedRows* rows = &unrelated;
    EXPECT_EQ(run.table.BuildSupervisedTable(99, target, rows), error(120010)) << target;
    EXPECT_EQ(rows, nullptr);
    EXPECT_EQ(run.table.CheckTarget(target), error(120010));
  }
  EXPECT_EQ(run.files.Calls(FileOperation::OpenForReading), 0U);
}

TEST(AttributeTableTest, AnAttributeWithoutAUsableColumnGives120013AndItsFileIsNotRead) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  list.AddCatVar("c", "", 1, IBINVariable::NumericCategoricalLevel, IBINVariable::AttributeRole);
  list.AddContVar("unused", "", IBINVariable::UndefinedRole);
  TableRun run(list, {{3, 2, 1, 0}});
  ASSERT_TRUE(run.Prepare().IsOK());
  EXPECT_TRUE(run.table.CheckTarget(1).IsOK());
  for (const int attribute : {-1, 2, 3, 4, std::numeric_limits<int>::max()}) {
    SortedRows unrelated;
    SortedRows* rows = &unrelated;
    EXPECT_EQ(run.table.BuildSupervisedTable(attribute, 1, rows), noColumn(attribute));
    EXPECT_EQ(rows, nullptr);
    rows = &unrelated;
    EXPECT_EQ(run.table.BuildUnsupervisedTable(attribute, rows), noColumn(attribute));
    EXPECT_EQ(rows, nullptr);
  }
  EXPECT_EQ(run.files.Calls(FileOperation::OpenForReading), 0U);
}

TEST(AttributeTableTest, AFailedBuildLeavesAnEmptySummary) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {{3, 2}, {4, 1}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.BuildSupervisedTable(7, 1, rows), noColumn(7));
  EXPECT_EQ(run.table.GetNRows(), 0U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 0U);
  EXPECT_EQ(run.table.GetTotalWeight(), 0.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 0.0);
  EXPECT_EQ(run.table.GetMinimum(), kMissing);
  EXPECT_EQ(run.table.GetMaximum(), kMissing);
}

TEST(AttributeTableTest, NothingIsBuiltFromAPassThatFailedOrNeverWas) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {});
  SortedRows* rows = nullptr;
  EXPECT_EQ(run.table.BuildSupervisedTable(0, 1, rows), error(3));
  EXPECT_TRUE(run.Prepare().IsError());
  EXPECT_EQ(run.table.BuildSupervisedTable(0, 1, rows), error(3));
  EXPECT_EQ(run.table.BuildUnsupervisedTable(0, rows), error(3));
  EXPECT_EQ(rows, nullptr);
}

/// Puts another value into the last cell of a column file of `cells` cells.
void damageLastCell(const std::string& name, std::uintmax_t cells, double value) {
  std::filesystem::resize_file(name, (cells - 1) * sizeof value);
  MCBinning::FileHandle file = MCBinning::kNoFile;
  ASSERT_TRUE(MCBinning::realFileSystem().OpenForAppend(name, file));
  EXPECT_TRUE(MCBinning::realFileSystem().Write(file, &value, sizeof value));
  EXPECT_TRUE(MCBinning::realFileSystem().Close(file));
}

TEST(AttributeTableTest, ATargetThatCouldNotBeReadToItsEndIsNotTakenForTheOneBefore) {
  BINVarList list;
  addScale(list);
  list.AddCatVar("other", "", 2, IBINVariable::NumericCategoricalLevel,
                 IBINVariable::AttributeRole);
  addTarget(list, 2);
  TableRun run(list, {{1, 0, 1}, {2, 1, 0}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 2, rows).IsOK());
  const auto other = static_cast<std::size_t>(run.preparator.GetColumnOf(1));
  damageLastCell(run.preparator.GetFileNames()[other], 2, 9.0);
  EXPECT_EQ(run.table.BuildSupervisedTable(0, 1, rows), error(3));
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 2, rows).IsOK());
  EXPECT_EQ(rows->Code(0), 1);
  EXPECT_EQ(rows->Code(1), 0);
}

/// Three columns (target, weight, attribute) of five cases, spooled but not read yet.
class DamagedColumnTest : public testing::Test {
 protected:
  DamagedColumnTest() {
    addScale(list_);
    addTarget(list_);
    list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
    Spool();
  }

  void Spool() {
    run_ = std::make_unique<TableRun>(list_, Rows(5, {1, 1, 2}));
    EXPECT_TRUE(run_->Prepare().IsOK());
  }

  const std::string& Name(std::size_t column) const {
    return run_->preparator.GetFileNames()[column];
  }

  MCStatus Build() {
    SortedRows* rows = nullptr;
    const MCStatus status = run_->table.BuildSupervisedTable(0, 1, rows);
    EXPECT_EQ(rows != nullptr, status.IsOK());
    return status;
  }

  BINVarList list_;
  std::unique_ptr<TableRun> run_;
};

TEST_F(DamagedColumnTest, AColumnThatEndsEarlyGives3AndNeverZeros) {
  for (const std::size_t column : {0U, 1U, 2U}) {
    for (const std::uintmax_t bytes : {39U, 32U, 7U, 0U}) {
      Spool();
      std::filesystem::resize_file(Name(column), bytes);
      EXPECT_EQ(Build(), error(3)) << column << " " << bytes;
      EXPECT_EQ(Build(), error(3)) << column << " " << bytes;
    }
  }
}

TEST_F(DamagedColumnTest, AColumnThatIsGoneGives3) {
  for (const std::size_t column : {0U, 1U, 2U}) {
    Spool();
    testing::internal::CaptureStdout();
    std::filesystem::remove(Name(column));
    EXPECT_EQ(Build(), error(3));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error: file handle is NULL in BinaryRecordIterator constructor");
  }
}

TEST_F(DamagedColumnTest, ATargetCellThatThePassNeverWroteGives3) {
  // The highest code is 1.
  for (const double cell : {2.0, 255.0, 256.0, -1.0, 1e300, kNaN, -kInfinity}) {
    Spool();
    damageLastCell(Name(0), 5, cell);
    EXPECT_EQ(Build(), error(3)) << cell;
  }
}

TEST_F(DamagedColumnTest, EveryOpenOrReadThatFailsGives3AndTheNextBuildIsRight) {
  for (const FileOperation operation : {FileOperation::OpenForReading, FileOperation::Read}) {
    for (std::size_t call = 1;; ++call) {
      Spool();
      run_->files.FailAt(operation, call);
      testing::internal::CaptureStdout();
      const MCStatus status = Build();
      testing::internal::GetCapturedStdout();
      if (run_->files.Calls(operation) < call) {
        EXPECT_TRUE(status.IsOK());
        EXPECT_GT(call, 3U);
        break;
      }
      // A read beyond the last value that is needed may fail unnoticed.
      EXPECT_TRUE(status == error(3) || (status.IsOK() && operation == FileOperation::Read));
      EXPECT_EQ(run_->table.GetTotalWeight(), status.IsOK() ? 10.0 : 0.0);
      EXPECT_TRUE(Build().IsOK());
      EXPECT_EQ(run_->table.GetTotalWeight(), 10.0);
    }
  }
}

TEST(AttributeTableTest, WhatTheLastFlushLostGives3ForThePairsThatNeedIt) {
  BINVarList list;
  addScale(list, "a");
  addScale(list, "b");
  addTarget(list);
  TableRun run(list, Rows(10, {1, 2, 1}));
  run.files.FailAt(FileOperation::Write, 3);
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  EXPECT_TRUE(run.table.BuildSupervisedTable(0, 2, rows).IsOK());
  EXPECT_EQ(run.table.BuildSupervisedTable(1, 2, rows), error(3));
  EXPECT_TRUE(run.table.BuildUnsupervisedTable(0, rows).IsOK());
}

TEST(AttributeTableTest, AFileThatSomebodyElseMadeUnderAnUnusedNameIsNotRead) {
  BINVarList list;
  addScale(list, "a");
  addScale(list, "b");
  addTarget(list);
  TableRun run(list, Rows(2, {1, 2, 1}));
  run.files.FailAt(FileOperation::Create, 2);
  std::vector<std::string> names;
  run.files.SetHook([&](FileOperation operation, const std::string& name) {
    if (operation == FileOperation::Probe) {
      names.push_back(name);
    }
  });
  ASSERT_TRUE(run.Prepare().IsOK());
  ASSERT_EQ(names.size(), 3U);
  for (const std::size_t column : {1U, 2U}) {
    std::ofstream(names[column]) << std::string(2 * sizeof(double), 'x');
  }
  testing::internal::CaptureStdout();
  SortedRows* rows = nullptr;
  EXPECT_EQ(run.table.BuildSupervisedTable(0, 2, rows), error(3));
  EXPECT_EQ(run.table.BuildSupervisedTable(1, 2, rows), error(3));
  testing::internal::GetCapturedStdout();
  for (const std::size_t column : {1U, 2U}) {
    EXPECT_TRUE(std::filesystem::remove(names[column]));
  }
}

}  // namespace
