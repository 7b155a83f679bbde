#include "data/prepared_data.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "data/attribute_table.h"
#include "mcbinning/variable_list.h"
#include "support/failing_file_system.h"
#include "support/host_objects.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace {

using MCBinning::MCStatus;
using MCBinning::PreparedData;
using mcbinning_tests::VectorCases;

const std::vector<std::vector<double>> kRows = {{1, 0}, {2, 1}, {3, 0}};

struct Preparation {
  explicit Preparation(const std::vector<std::vector<double>>& rows = kRows,
                       MCQueryCancel* query = nullptr)
      : cancel(query), cases(rows), data(list, cancel, files) {
    list.AddContVar("x", "", IBINVariable::AttributeRole);
    list.AddCatVar("t", "", std::vector<double>{1.0, 2.0}, IBINVariable::TargetRole);
    options.tempDirName = directory.Path();
  }

  std::string Display() const {
    std::ostringstream os;
    data.Display(os);
    return os.str();
  }

  mcbinning_tests::ScratchDirectory directory;
  mcbinning_tests::FailingFileSystem files;
  MCBinning::CancelState cancel;
  BINVarList list;
  VectorCases cases;
  PreparedData::Options options;
  PreparedData data;
};

TEST(PreparedDataTest, NothingExistsBefore) {
  const Preparation preparation;
  EXPECT_FALSE(preparation.data.Exists());
  EXPECT_EQ(preparation.Display(), "");
}

TEST(PreparedDataTest, DataAndFilesExistUntilTheyAreDiscarded) {
  Preparation preparation;
  EXPECT_TRUE(preparation.data.Prepare(preparation.cases, preparation.options).IsOK());
  EXPECT_TRUE(preparation.data.Exists());
  EXPECT_EQ(preparation.directory.Files().size(), 2U);
  EXPECT_EQ(preparation.Display().rfind("BINDataPreparator object: \n", 0), 0U);
  MCBinning::SortedRows* rows = nullptr;
  EXPECT_TRUE(preparation.data.Table().BuildUnsupervisedTable(0, rows).IsOK());
  EXPECT_EQ(preparation.data.Table().GetNRows(), 3U);
  preparation.data.Discard();
  EXPECT_FALSE(preparation.data.Exists());
  EXPECT_TRUE(preparation.directory.IsEmpty());
  EXPECT_EQ(preparation.Display(), "");
}

TEST(PreparedDataTest, NoCaseMakesNoFile) {
  Preparation preparation(std::vector<std::vector<double>>{});
  EXPECT_TRUE(preparation.data.Prepare(preparation.cases, preparation.options) ==
              MCStatus(120004, false));
  EXPECT_FALSE(preparation.data.Exists());
  EXPECT_EQ(preparation.files.Calls(mcbinning_tests::FileOperation::Probe), 0U);
}

TEST(PreparedDataTest, PassThatFailedIsThrownAway) {
  mcbinning_tests::CountingQuery query(2);
  Preparation preparation(kRows, &query);
  EXPECT_TRUE(preparation.data.Prepare(preparation.cases, preparation.options) ==
              MCStatus(1, false));
  EXPECT_FALSE(preparation.data.Exists());
  EXPECT_TRUE(preparation.directory.IsEmpty());
}

TEST(PreparedDataTest, WarningOfThePassKeepsTheData) {
  Preparation preparation({{1, 0}, {2, 256}});
  preparation.list.AddCatVar("second", "", std::vector<double>{1.0, 2.0},
                             IBINVariable::UndefinedRole);
  const MCStatus status = preparation.data.Prepare(preparation.cases, preparation.options);
  EXPECT_EQ(status.GetErrorCode(), 120012);
  EXPECT_TRUE(status.IsWarning());
  EXPECT_TRUE(preparation.data.Exists());
}

TEST(PreparedDataTest, ExceptionPassesThroughAndLeavesNothing) {
  Preparation preparation;
  preparation.cases.ThrowAtNext(2);
  EXPECT_THROW(preparation.data.Prepare(preparation.cases, preparation.options),
               std::runtime_error);
  EXPECT_FALSE(preparation.data.Exists());
  EXPECT_TRUE(preparation.directory.IsEmpty());
  preparation.cases.Restart();
  EXPECT_TRUE(preparation.data.Prepare(preparation.cases, preparation.options).IsOK());
}

TEST(PreparedDataTest, OptionsReachThePreparator) {
  Preparation preparation;
  mcbinning_tests::RecordingListener listener;
  preparation.options.listener = &listener;
  preparation.options.reportInterval = 2;
  preparation.data.Prepare(preparation.cases, preparation.options);
  EXPECT_EQ(listener.indexes, std::vector<int>{2});
}

}  // namespace
