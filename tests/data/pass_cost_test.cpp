// What the pass costs a host, counted: calls into its iterator and its records, and allocations.

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>
#include <mccomvor/record.h>

#include <cstddef>
#include <cstdint>
#include <map>

#include "data/data_preparator.h"
#include "support/allocation_hooks.h"
#include "support/cell_reading.h"
#include "support/counting_clock.h"
#include "support/failing_file_system.h"
#include "support/host_objects.h"
#include "support/scratch_directory.h"

namespace {

std::map<int, std::uint64_t> cellsRead;

using mcbinning_tests::Allocations;
using mcbinning_tests::ClockReadings;

/// `count` cases with cells target, weight, unused, scale, categorical, scale.
class GeneratedCases : public BINCaseIterator {
 public:
  explicit GeneratedCases(std::uint64_t count) : count_(count) {}

  bool HasNext() override {
    ++hasNextCalls;
    return nextCalls < count_;
  }

  const MCCommon::Record* Next() override {
    const std::uint64_t number = nextCalls++;
    record_[0] = static_cast<double>(number % 3);
    record_[1] = 1.0 + static_cast<double>(number % 2);
    record_[3] = static_cast<double>(number);
    record_[4] = number == unknownCodeAt ? 256.0 : static_cast<double>(number % 5);
    record_[5] = number % 7 == 0 ? MCMV::gMissingValue : 0.5;
    if (number == 30000) {
      allocationsEarly = Allocations();
      clockReadingsEarly = ClockReadings();
    }
    if (number + 1 == count_) {
      allocationsLate = Allocations();
      clockReadingsLate = ClockReadings();
    }
    return &record_;
  }

  std::uint64_t hasNextCalls = 0;
  std::uint64_t nextCalls = 0;
  std::uint64_t unknownCodeAt = static_cast<std::uint64_t>(-1);
  std::size_t allocationsEarly = 0;
  std::size_t allocationsLate = 0;
  std::size_t clockReadingsEarly = 0;
  std::size_t clockReadingsLate = 0;

 private:
  std::uint64_t count_;
  MCCommon::Record record_{6};
};

class PassCostTest : public testing::Test {
 protected:
  PassCostTest() {
    list_.AddCatVar("t", "", 3, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
    list_.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
    list_.AddContVar("unused", "", IBINVariable::UndefinedRole);
    list_.AddContVar("x", "", IBINVariable::AttributeRole);
    list_.AddCatVar("c", "", 5, IBINVariable::NumericCategoricalLevel, IBINVariable::AttributeRole);
    list_.AddContVar("y", "", IBINVariable::AttributeRole);
    list_.AddDiscreteUserMissing(5, 99.0, "");
  }

  MCBinning::MCStatus Prepare(GeneratedCases& cases, ProgressListener* listener = nullptr) {
    mcbinning_tests::ScratchDirectory directory;
    MCBinning::BINDataPreparator preparator(directory.Path(), listener, 1000, cancel_, list_,
                                            files_);
    return preparator.PrepareData(cases);
  }

  BINVarList list_;
  MCBinning::CancelState cancel_{nullptr};
  mcbinning_tests::FailingFileSystem files_;
};

TEST_F(PassCostTest, MillionsOfCasesAreAskedForOnceCellByCell) {
  constexpr std::uint64_t kCases = 3000000;
  GeneratedCases cases(kCases);
  cellsRead.clear();
  mcbinning_tests::onCellRead = [](int index) { ++cellsRead[index]; };
  EXPECT_TRUE(Prepare(cases).IsOK());
  mcbinning_tests::onCellRead = nullptr;
  EXPECT_EQ(cases.hasNextCalls, kCases + 1);
  EXPECT_EQ(cases.nextCalls, kCases);
  const std::map<int, std::uint64_t> expected = {
      {0, kCases}, {1, kCases}, {3, kCases}, {4, kCases}, {5, kCases}};
  EXPECT_EQ(cellsRead, expected);
  EXPECT_EQ(files_.BytesWritten(), kCases * 5 * sizeof(double));
}

TEST_F(PassCostTest, NothingIsAllocatedPerCase) {
  GeneratedCases cases(2000000);
  EXPECT_TRUE(Prepare(cases).IsOK());
  EXPECT_GT(cases.allocationsEarly, 0U);
  EXPECT_EQ(cases.allocationsLate - cases.allocationsEarly, 0U);
}

TEST_F(PassCostTest, TheClockIsReadForReportsOnly) {
  GeneratedCases unheard(40001);
  EXPECT_TRUE(Prepare(unheard).IsOK());
  EXPECT_GT(unheard.clockReadingsEarly, 0U);
  EXPECT_EQ(unheard.clockReadingsLate - unheard.clockReadingsEarly, 0U);
  mcbinning_tests::RecordingListener listener;
  GeneratedCases heard(40001);
  EXPECT_TRUE(Prepare(heard, &listener).IsOK());
  EXPECT_EQ(heard.clockReadingsLate - heard.clockReadingsEarly, 10U);
  ASSERT_EQ(listener.elapsed.size(), 40U);
  for (std::size_t report = 0; report < listener.elapsed.size(); ++report) {
    EXPECT_EQ(listener.elapsed[report], static_cast<double>(report + 1) / 1000.0);
  }
}

TEST_F(PassCostTest, AColumnThatWasGivenUpIsNotAskedForAnyMore) {
  GeneratedCases cases(1000);
  cases.unknownCodeAt = 99;
  cellsRead.clear();
  mcbinning_tests::onCellRead = [](int index) { ++cellsRead[index]; };
  EXPECT_TRUE(Prepare(cases).IsWarning());
  mcbinning_tests::onCellRead = nullptr;
  EXPECT_EQ(cellsRead[4], 100U);
  EXPECT_EQ(cellsRead[5], 1000U);
}

}  // namespace
