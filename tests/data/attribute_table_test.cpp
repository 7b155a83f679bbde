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

std::vector<double> values(const SortedRows& rows) {
  std::vector<double> result;
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    result.push_back(rows.Value(row));
  }
  return result;
}

TEST(AttributeTableTest, RowsOfTheAttributeComeSortedWithTheirCodesAndWeights) {
  BINVarList list;
  addScale(list);
  addTarget(list, 3);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  TableRun run(list, {{3.5, 0, 2}, {1.5, 2, 1}, {3.5, 1, 4}, {-7, 1, 3.9}, {2, 1, 0.5}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  ASSERT_NE(rows, nullptr);
  EXPECT_EQ(values(*rows), (std::vector<double>{-7, 1.5, 3.5, 3.5}));
  EXPECT_EQ(rows->Code(0), 1);
  EXPECT_EQ(rows->Weight(0), 3.0);
  EXPECT_EQ(rows->Code(2), 0);
  EXPECT_EQ(rows->Code(3), 1);
  EXPECT_EQ(run.table.GetNTargetCategories(), 3U);
  EXPECT_EQ(run.table.GetNRows(), 4U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 3U);
  EXPECT_EQ(run.table.GetMinimum(), -7.0);
  EXPECT_EQ(run.table.GetMaximum(), 3.5);
  EXPECT_EQ(run.table.GetTotalWeight(), 10.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 10.0);
}

TEST(AttributeTableTest, EqualValuesStayInTheOrderOfTheCasesWhenSumsDependOnIt) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  list.AddWeightVar("w", "", static_cast<IBINVariable::BINWRoundingOption>(7));
  TableRun run(list, {{1, 3, .1}, {0, 9, .2}, {1, 2, .3}, {-0.0, 8, .4}, {1, 1, .5}, {0, 7, .6}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  std::vector<int> codes;
  for (std::size_t row = 0; row < rows->Size(); ++row) {
    codes.push_back(rows->Code(row));
  }
  EXPECT_EQ(codes, (std::vector<int>{9, 8, 7, 3, 2, 1}));
}

TEST(AttributeTableTest, RowsOfOneValueAndCodeCountAsTheirCases) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {{1, 3}, {1, 3}, {1, 0}, {2, 3}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.GetNRows(), 4U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 2U);
  EXPECT_EQ(run.table.GetTotalWeight(), 4.0);
}

TEST(AttributeTableTest, AnAttributeWithoutAnyValueHasNoRows) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  addWeight(list);
  TableRun run(list, {{kMissing, 1, 2}, {kMissing, 0, 3}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(rows->Size(), 0U);
  EXPECT_EQ(run.table.GetNRows(), 0U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 0U);
  EXPECT_EQ(run.table.GetMinimum(), kMissing);
  EXPECT_EQ(run.table.GetMaximum(), kMissing);
  EXPECT_EQ(run.table.GetTotalWeight(), 0.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 5.0);
}

TEST(AttributeTableTest, RowsWithAMissingTargetCountInTheTotalWithMissingOnly) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {{1, 1}, {2, kMissing}, {3, -1}, {kMissing, 1}, {kMissing, kMissing}, {4, 0}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{1, 4}));
  EXPECT_EQ(run.table.GetTotalWeight(), 2.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 6.0);
  EXPECT_EQ(rows->Weight(0), 1.0);
}

TEST(AttributeTableTest, ACaseWithoutAWeightCountsInNeitherTotal) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  addWeight(list);
  TableRun run(list, {{1, 1, 3}, {2, 1, kMissing}, {3, 1, 0}, {kMissing, 1, 5}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(values(*rows), std::vector<double>{1});
  EXPECT_EQ(run.table.GetTotalWeight(), 3.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 8.0);
}

TEST(AttributeTableTest, ZerosAreOneValueAndEveryNaNIsOneOfItsOwn) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {{kNaN, 1}, {0.0, 1}, {-0.0, 1}, {kNaN, 0}, {0.0, 0}, {kInfinity, 1}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.GetNRows(), 6U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 4U);
  EXPECT_EQ(run.table.GetMinimum(), 0.0);
  EXPECT_NE(run.table.GetMaximum(), run.table.GetMaximum());
}

TEST(AttributeTableTest, InfinitiesAndDenormalsAreOrdinaryValues) {
  const double smallest = std::numeric_limits<double>::denorm_min();
  BINVarList list;
  addScale(list);
  addTarget(list);
  TableRun run(list, {{kInfinity, 1}, {smallest, 1}, {-kInfinity, 0}, {0, 0}, {-smallest, 0}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{-kInfinity, -smallest, 0, smallest, kInfinity}));
  EXPECT_EQ(run.table.GetNDistinctValues(), 5U);
  EXPECT_EQ(run.table.GetMinimum(), -kInfinity);
  EXPECT_EQ(run.table.GetMaximum(), kInfinity);
}

TEST(AttributeTableTest, TotalsAreSumsInTheOrderOfTheCases) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  list.AddWeightVar("w", "", static_cast<IBINVariable::BINWRoundingOption>(7));
  const std::vector<double> weights = {1e16, 1.0, 0.1, 1.0, 0.3, 3.0, 1e-3};
  Rows cases;
  double total = 0.0;
  double totalWithMissing = 0.0;
  for (std::size_t i = 0; i < weights.size(); ++i) {
    const bool isMissing = i % 3 == 1;
    cases.push_back({isMissing ? kMissing : -static_cast<double>(i), 1, weights[i]});
    totalWithMissing += weights[i];
    total += isMissing ? 0.0 : weights[i];
  }
  TableRun run(list, cases);
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
  EXPECT_EQ(run.table.GetTotalWeight(), total);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), totalWithMissing);
}

TEST(AttributeTableTest, TheUnsupervisedTableIgnoresTheTarget) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  addWeight(list);
  TableRun run(list, {{3, kMissing, 2}, {1, 1, 4}, {kMissing, 1, 8}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildUnsupervisedTable(0, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{1, 3}));
  EXPECT_EQ(rows->Code(0), 0);
  EXPECT_EQ(rows->Weight(1), 2.0);
  EXPECT_EQ(run.table.GetTotalWeight(), 6.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 14.0);
  EXPECT_EQ(run.table.GetNRows(), 2U);
  EXPECT_EQ(run.table.GetNDistinctValues(), 2U);
}

TEST(AttributeTableTest, WithoutATargetOrAWeightEveryRowWeighs1) {
  BINVarList list;
  addScale(list);
  TableRun run(list, {{3}, {kMissing}, {1}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildUnsupervisedTable(0, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{1, 3}));
  EXPECT_EQ(rows->Weight(0), 1.0);
  EXPECT_EQ(run.table.GetTotalWeight(), 2.0);
  EXPECT_EQ(run.table.GetTotalWeightWithMissing(), 3.0);
  EXPECT_EQ(run.table.BuildSupervisedTable(0, -1, rows), error(120010));
}

TEST(AttributeTableTest, AnyCategoricalVariableWithAColumnCanBeTheTarget) {
  BINVarList list;
  addScale(list);
  list.AddCatVar("c", "", 256, IBINVariable::NumericCategoricalLevel, IBINVariable::AttributeRole);
  addTarget(list);
  for (int i = 0; i < 2; ++i) {
    TableRun run(list, {{3, 4, 0}, {1, -1, 1}, {2, 2, kMissing}});
    ASSERT_TRUE(run.Prepare().IsOK());
    SortedRows* rows = nullptr;
    ASSERT_TRUE(run.table.BuildSupervisedTable(0, 1, rows).IsOK());
    EXPECT_EQ(values(*rows), (std::vector<double>{2, 3}));
    EXPECT_EQ(rows->Code(1), 4);
    EXPECT_EQ(run.table.GetNTargetCategories(), 5U);
    ASSERT_TRUE(run.table.BuildSupervisedTable(0, 2, rows).IsOK());
    EXPECT_EQ(values(*rows), (std::vector<double>{1, 3}));
    EXPECT_EQ(run.table.GetNTargetCategories(), 2U);
    list.SetVariableRole(2, IBINVariable::AttributeRole);  // and once more without a target
  }
}

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

TEST(AttributeTableTest, TheVariableCanBeItsOwnTargetAndTheWeightAnAttribute) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  addWeight(list);
  TableRun run(list, {{3, 2, 7}, {4, 1, 5}});
  ASSERT_TRUE(run.Prepare().IsOK());
  SortedRows* rows = nullptr;
  ASSERT_TRUE(run.table.BuildSupervisedTable(1, 1, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{1, 2}));
  EXPECT_EQ(rows->Code(1), 2);
  ASSERT_TRUE(run.table.BuildSupervisedTable(2, 1, rows).IsOK());
  EXPECT_EQ(values(*rows), (std::vector<double>{5, 7}));
}

TEST(AttributeTableTest, PrepareHandsOnTheStatusOfThePass) {
  BINVarList list;
  addScale(list);
  addTarget(list);
  list.AddCatVar("c", "", 9, IBINVariable::NumericCategoricalLevel, IBINVariable::AttributeRole);
  TableRun warned(list, {{1, 256, 0}});
  EXPECT_TRUE(warned.Prepare().IsWarning());
  EXPECT_EQ(warned.table.CheckTarget(1), error(120010));
  TableRun empty(list, {});
  EXPECT_EQ(empty.Prepare(), error(120004));
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
  ASSERT_TRUE(MCBinning::RealFileSystem().OpenForAppend(name, file));
  EXPECT_TRUE(MCBinning::RealFileSystem().Write(file, &value, sizeof value));
  EXPECT_TRUE(MCBinning::RealFileSystem().Close(file));
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
