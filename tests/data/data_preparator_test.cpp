#include "data/data_preparator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "data/binary_record_iterator.h"
#include "support/display.h"
#include "support/host_objects.h"
#include "support/table_run.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::CountingQuery;
using mcbinning_tests::DisplayOf;
using mcbinning_tests::FileOperation;
using mcbinning_tests::Flushing;
using mcbinning_tests::RecordingListener;
using mcbinning_tests::TableRun;

using Rows = std::vector<std::vector<double>>;

MCStatus error(long code) { return MCStatus(code, false); }

MCStatus codeTooHigh(bool isWarning, long datum) {
  MCStatus status(120012, isWarning);
  status.SetDiscreteDatum(0, datum);
  return status;
}

int addCategorical(BINVarList& list, const std::string& name, IBINVariable::VariableRole role,
                   int categories = 300) {
  return list.AddCatVar(name, "", categories, IBINVariable::NumericCategoricalLevel, role);
}

int addScale(BINVarList& list, const std::string& name) {
  return list.AddContVar(name, "", IBINVariable::AttributeRole);
}

/// What the pass spooled for one column.
std::vector<double> column(const TableRun& run, int index) {
  std::vector<double> values;
  MCBinning::BinaryRecordIterator reader(
      run.preparator.GetFileNames().at(static_cast<std::size_t>(index)));
  while (reader.HasNext()) {
    values.push_back(reader.Next());
  }
  return values;
}

bool isUsed(const TableRun& run, int index) {
  bool used = false;
  EXPECT_TRUE(run.preparator.GetColumnUseFlag(index, used).IsOK());
  return used;
}

/// A list of target, input categorical and scale; cases {target, categorical, scale}.
class DataPreparatorTest : public testing::Test {
 protected:
  DataPreparatorTest() {
    addCategorical(list_, "target", IBINVariable::TargetRole);
    addCategorical(list_, "colour", IBINVariable::AttributeRole);
    addScale(list_, "size");
  }

  BINVarList list_;
};

TEST(DataPreparatorLayoutTest, ColumnUseFlagOfABadColumnGives120013) {
  BINVarList list;
  addScale(list, "a");
  TableRun run(list, {});
  for (const int index :
       {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    bool used = true;
    EXPECT_EQ(run.preparator.GetColumnUseFlag(index, used), error(120013));
    EXPECT_TRUE(used);
  }
  EXPECT_TRUE(isUsed(run, 0));
}

TEST_F(DataPreparatorTest, AVariableThatIsNotThereHasNoColumn) {
  TableRun run(list_, {});
  EXPECT_EQ(run.preparator.GetColumnOf(-1), -1);
  EXPECT_EQ(run.preparator.GetColumnOf(2), 2);
  EXPECT_EQ(run.preparator.GetColumnOf(3), -1);
}

TEST_F(DataPreparatorTest, ANullCaseIsPassedOver) {
  TableRun run(list_, {{0, 0, 1}, {}, {1, 1, 2}});
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), 2U);
  EXPECT_EQ(run.cases.NextCalls(), 3U);
}

TEST(DataPreparatorTargetTest, ATargetCodeOf256IsAnErrorWithOneCategoricalVariable) {
  BINVarList list;
  addScale(list, "a");
  addCategorical(list, "t", IBINVariable::TargetRole);
  TableRun run(list, {{1, 2}, {1, 256}, {1, 3}});
  EXPECT_EQ(run.preparator.PrepareData(run.cases), codeTooHigh(false, 1));
  EXPECT_EQ(run.preparator.GetStatus(), codeTooHigh(false, 1));
  EXPECT_EQ(run.cases.NextCalls(), 2U);
  EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), 0U);
  EXPECT_TRUE(run.preparator.GetFileNames().empty());
  EXPECT_TRUE(run.directory.IsEmpty());
}

TEST_F(DataPreparatorTest, AllCasesSkippedGives120004) {
  list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  TableRun run(list_, {{0, 0, 1, 0}, {}});
  bool created = false;
  run.files.SetHook([&](FileOperation operation, const std::string&) {
    created = created || operation == FileOperation::Create;
  });
  EXPECT_EQ(run.preparator.PrepareData(run.cases), error(120004));
  EXPECT_TRUE(created);
  EXPECT_TRUE(run.directory.IsEmpty());
}

TEST_F(DataPreparatorTest, EveryBufferfulReachesTheFilesInOrder) {
  for (const std::size_t size : {9999U, 10000U, 10001U, 25000U}) {
    Rows rows;
    for (std::size_t i = 0; i < size; ++i) {
      rows.push_back({static_cast<double>(i % 3), 1, static_cast<double>(i)});
    }
    TableRun run(list_, rows);
    ASSERT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
    EXPECT_EQ(run.files.Calls(FileOperation::Close), 3 * (size / 10000 + 1));
    EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), size);
    const std::vector<double> values = column(run, 2);
    ASSERT_EQ(values.size(), size);
    for (std::size_t i = 0; i < size; ++i) {
      ASSERT_EQ(values[i], static_cast<double>(i));
    }
  }
}

TEST_F(DataPreparatorTest, AGivenUpColumnStopsGrowing) {
  Rows rows(25000, {0, 1, 2});
  rows[12000][1] = 256;
  TableRun run(list_, rows);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsWarning());
  EXPECT_EQ(column(run, 0).size(), 25000U);
  EXPECT_EQ(column(run, 1).size(), 12000U);
}

TEST_F(DataPreparatorTest, ASecondPassStartsAnew) {
  TableRun run(list_, {{256, 7, 1}});
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsWarning());
  EXPECT_EQ(run.preparator.GetHighestCode(1), 7);
  mcbinning_tests::VectorCases cases({{1, 2, 3}, {0, 0, 4}});
  EXPECT_TRUE(run.preparator.PrepareData(cases).IsOK());
  EXPECT_TRUE(isUsed(run, 0));
  EXPECT_EQ(column(run, 0), (std::vector<double>{1, 0}));
  EXPECT_EQ(run.preparator.GetHighestCode(1), 2);
  EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), 2U);
  EXPECT_EQ(run.directory.Files().size(), 3U);
}

TEST_F(DataPreparatorTest, WithAnIntervalOf3EveryThirdCaseIsReported) {
  RecordingListener listener;
  TableRun run(list_, Rows(10, {0, 0, 1}), nullptr, &listener, 3);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  EXPECT_EQ(listener.indexes, (std::vector<int>{3, 6, 9}));
  for (const double seconds : listener.elapsed) {
    EXPECT_GE(seconds, 0.0);
    EXPECT_LT(seconds, 10.0);
  }
}

TEST_F(DataPreparatorTest, NullCasesCountDownButAreNotRead) {
  RecordingListener listener;
  list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  TableRun run(list_, {{0, 0, 1, 1}, {}, {0, 0, 1, 0}, {}, {}, {0, 0, 1, 1}}, nullptr, &listener,
               3);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  EXPECT_EQ(listener.indexes, (std::vector<int>{2, 3}));
}

TEST_F(DataPreparatorTest, WithAnIntervalOf0NothingIsReported) {
  RecordingListener listener;
  TableRun run(list_, Rows(100, {0, 0, 1}), nullptr, &listener, 0);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  EXPECT_TRUE(listener.indexes.empty());
}

TEST_F(DataPreparatorTest, ACancelAtAnyQuestionEndsThePassWith1) {
  constexpr std::size_t kCases = 7;
  for (std::size_t question = 1; question <= kCases + 1; ++question) {
    CountingQuery query(question);
    TableRun run(list_, Rows(kCases, {0, 0, 1}), &query);
    EXPECT_EQ(run.preparator.PrepareData(run.cases), error(1));
    EXPECT_EQ(query.Asked(), question);
    EXPECT_EQ(run.cases.NextCalls(), question - 1);
    EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), 0U);
    EXPECT_TRUE(run.directory.IsEmpty());
  }
  CountingQuery never;
  TableRun run(list_, Rows(kCases, {0, 0, 1}), &never);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
  EXPECT_EQ(never.Asked(), kCases + 1);
}

TEST_F(DataPreparatorTest, ACancelTakesPrecedenceOverAPassWithoutCases) {
  CountingQuery query(1);
  TableRun run(list_, {}, &query);
  EXPECT_EQ(run.preparator.PrepareData(run.cases), error(1));
}

TEST_F(DataPreparatorTest, ATemporaryDirectoryThatIsNotThereGives120001BeforeAnyCase) {
  TableRun run(list_, Rows(3, {0, 0, 1}));
  MCBinning::BINDataPreparator preparator(run.directory.Path() + "/missing", nullptr, 0, run.cancel,
                                          list_, run.files);
  EXPECT_EQ(preparator.PrepareData(run.cases), error(120001));
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
}

TEST_F(DataPreparatorTest, TooManyOpenFilesInTheSearchGive120021) {
  TableRun run(list_, Rows(3, {0, 0, 1}));
  run.files.FailAt(FileOperation::Probe, 3);
  EXPECT_EQ(run.preparator.PrepareData(run.cases), error(120021));
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
}

TEST_F(DataPreparatorTest, AFullDiskDuringThePassGives120021AndLeavesNoFile) {
  TableRun run(list_, Rows(20001, {0, 0, 1}));
  run.files.LimitRoom(3 * 10000 * sizeof(double) + 1000);
  EXPECT_EQ(run.preparator.PrepareData(run.cases), error(120021));
  EXPECT_EQ(run.cases.NextCalls(), 20000U);
  EXPECT_TRUE(run.directory.IsEmpty());
}

TEST_F(DataPreparatorTest, TheLastFlushIsNotLookedAt) {
  TableRun run(list_, Rows(10, {0, 0, 1}));
  run.files.FailAt(FileOperation::Write, 2);
  EXPECT_TRUE(run.preparator.PrepareData(run.cases).IsOK());
}

TEST_F(DataPreparatorTest, WhenAHostObjectThrowsTheFilesAreGone) {
  enum class Thrower { HasNext, Next, Listener, Query };
  for (const auto thrower : {Thrower::HasNext, Thrower::Next, Thrower::Listener, Thrower::Query}) {
    CountingQuery query;
    query.ThrowAt(15001);
    RecordingListener listener;
    TableRun run(list_, Rows(20000, {0, 0, 1}), thrower == Thrower::Query ? &query : nullptr,
                 &listener, 1000);
    run.cases.ThrowAtHasNext(thrower == Thrower::HasNext ? 15001 : 0);
    run.cases.ThrowAtNext(thrower == Thrower::Next ? 15001 : 0);
    listener.throwAt = thrower == Thrower::Listener ? 15 : 0;
    EXPECT_THROW(run.preparator.PrepareData(run.cases), std::runtime_error);
    EXPECT_EQ(run.preparator.GetStatus(), error(3));
    EXPECT_EQ(run.files.Calls(FileOperation::Create), 3U);
    EXPECT_TRUE(run.directory.IsEmpty());
    EXPECT_EQ(run.preparator.GetNumberOfCasesUsed(), 0U);
    EXPECT_TRUE(run.preparator.GetFileNames().empty());
    EXPECT_EQ(run.files.OpenFiles(), 0U);
  }
}

TEST_F(DataPreparatorTest, DestructionRemovesTheFiles) {
  mcbinning_tests::ScratchDirectory directory;
  MCBinning::CancelState cancel(nullptr);
  mcbinning_tests::VectorCases cases({{0, 0, 1}});
  {
    MCBinning::BINDataPreparator preparator(directory.Path(), nullptr, 0, cancel, list_,
                                            MCBinning::realFileSystem());
    ASSERT_TRUE(preparator.PrepareData(cases).IsOK());
    EXPECT_EQ(directory.Files().size(), 3U);
  }
  EXPECT_TRUE(directory.IsEmpty());
}

TEST(DataPreparatorDisplayTest, ShowsTheLayoutAndTheStatus) {
  BINVarList list;
  addScale(list, "a");
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  list.AddContVar("unused", "", IBINVariable::UndefinedRole);
  addCategorical(list, "t", IBINVariable::TargetRole);
  addCategorical(list, "c", IBINVariable::AttributeRole);
  TableRun run(list, {{1, 1, 1, 0, 256}});
  const std::string head =
      "BINDataPreparator object: \n"
      "\tPossible inputs used? \tOriginal record size = 4\n"
      "\tProcessed record size = 4\n"
      "\tInput-only record size = 2\n"
      "\tFrequency weight original and new indices: 1   1\n"
      "\tVariable index: 2 1 -1 0 3 \n"
      "\tIndices of input variables in the variable list: 0 4 \n"
      "\tVariable measurement levels: 1 4 1 2 2 \n"
      "\tVariable roles: 1 3 0 2 1 \n"
      "\n";
  // The line of an OK status ends without a flush.
  EXPECT_EQ(DisplayOf(run.preparator), Flushing(head) + "\tStatus is OK.\n" + DisplayOf(list));
  run.preparator.PrepareData(run.cases);
  EXPECT_EQ(DisplayOf(run.preparator),
            Flushing(head + "\tStatus has error code 120012\n") + DisplayOf(list));
}

TEST(DataPreparatorDisplayTest, TheLayoutStaysWhenTheListChanges) {
  BINVarList list;
  addScale(list, "a");
  addCategorical(list, "c", IBINVariable::AttributeRole);
  const TableRun run(list, {});
  const std::string before = DisplayOf(run.preparator);
  const std::string head = before.substr(0, before.size() - DisplayOf(list).size());
  ASSERT_TRUE(list.RemoveVar(0));
  EXPECT_EQ(DisplayOf(run.preparator), head + DisplayOf(list));
}

TEST(DataPreparatorDisplayTest, WithoutAWeightTheIndexIsMinusOneAndTheFlag0) {
  BINVarList list;
  addScale(list, "a");
  TableRun run(list, {});
  EXPECT_EQ(DisplayOf(run.preparator),
            Flushing("BINDataPreparator object: \n"
                     "\tPossible inputs used? \tOriginal record size = 1\n"
                     "\tProcessed record size = 1\n"
                     "\tInput-only record size = 1\n"
                     "\tFrequency weight original and new indices: -1   0\n"
                     "\tVariable index: 0 \n"
                     "\tIndices of input variables in the variable list: 0 \n"
                     "\tVariable measurement levels: 1 \n"
                     "\tVariable roles: 1 \n"
                     "\n") +
                "\tStatus is OK.\n" + DisplayOf(list));
}

}  // namespace
