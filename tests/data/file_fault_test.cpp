// Makes each file operation of a run fail in turn: the run either names the fault or is right, and
// leaves nothing behind.

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <vector>

#include "support/table_run.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::NameState;
using MCBinning::SortedRows;
using mcbinning_tests::FileOperation;
using mcbinning_tests::TableRun;

constexpr std::size_t kCases = 10050;

class FileFaultTest : public testing::TestWithParam<FileOperation> {
 protected:
  FileFaultTest() : cases_(kCases) {
    list_.AddContVar("x", "", IBINVariable::AttributeRole);
    list_.AddContVar("y", "", IBINVariable::AttributeRole);
    list_.AddCatVar("t", "", 3, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
    list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
    for (std::size_t i = 0; i < kCases; ++i) {
      const auto value = static_cast<double>(i * 31 % 1013);
      cases_[i] = {value, -value, static_cast<double>(i % 3), 1.0 + static_cast<double>(i % 2)};
    }
  }

  struct Results {
    bool operator==(const Results&) const = default;
    std::vector<double> cells;
  };

  /// The rows and totals of one table, or the status that refused it.
  static MCStatus Build(BINAttributeTable& table, int attribute, Results& results) {
    const SortedRows* rows = nullptr;
    const MCStatus status = table.BuildSupervisedTable(attribute, 2, &rows);
    EXPECT_EQ(rows != nullptr, status.IsOK());
    for (std::size_t row = 0; rows != nullptr && row < rows->Size(); ++row) {
      results.cells.insert(results.cells.end(), {rows->Value(row), rows->Weight(row),
                                                 static_cast<double>(rows->Code(row))});
    }
    results.cells.push_back(table.GetTotalWeight());
    return status;
  }

  BINVarList list_;
  std::vector<std::vector<double>> cases_;
};

TEST_P(FileFaultTest, TheRunNamesTheFaultOrIsRight) {
  const FileOperation operation = GetParam();
  std::vector<Results> right(2);
  {
    TableRun run(list_, cases_);
    ASSERT_TRUE(run.table.Prepare().IsOK());
    for (int attribute = 0; attribute < 2; ++attribute) {
      ASSERT_TRUE(Build(run.table, attribute, right[static_cast<std::size_t>(attribute)]).IsOK());
    }
  }
  testing::internal::CaptureStdout();
  std::size_t named = 0;
  std::size_t call = 1;
  for (bool happened = true; happened; ++call) {
    TableRun run(list_, cases_);
    run.files.FailAt(operation, call);
    const MCStatus prepared = run.table.Prepare();
    if (prepared.IsError()) {
      EXPECT_EQ(prepared, MCStatus(120021, false));
      EXPECT_TRUE(run.directory.IsEmpty());
      ++named;
    } else {
      for (int attribute = 0; attribute < 2; ++attribute) {
        Results results;
        const MCStatus built = Build(run.table, attribute, results);
        if (built.IsOK()) {
          EXPECT_TRUE(results == right[static_cast<std::size_t>(attribute)]);
        } else {
          EXPECT_EQ(built, MCStatus(3, false));
          ++named;
        }
      }
    }
    happened = run.files.Calls(operation) >= call;
    if (operation == FileOperation::Remove) {
      happened = call <= 4;  // removals come last, so they are known beforehand
    }
  }
  testing::internal::GetCapturedStdout();
  EXPECT_GT(call, 3U);
  if (operation != FileOperation::Remove) {
    EXPECT_GT(named, 0U);
  }
}

// Nothing in a run goes back in a file.
INSTANTIATE_TEST_SUITE_P(EveryOperation, FileFaultTest,
                         testing::Values(FileOperation::Probe, FileOperation::Create,
                                         FileOperation::OpenForAppend,
                                         FileOperation::OpenForReading, FileOperation::Write,
                                         FileOperation::Read, FileOperation::Close,
                                         FileOperation::Remove));

}  // namespace
