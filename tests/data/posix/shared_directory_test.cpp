// Several runs over one temporary directory at the same time.

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "data/attribute_table.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"
#include "system/child_process.h"

namespace {

using mcbinning_tests::AnswerOf;
using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::StartChild;
using mcbinning_tests::VectorCases;

constexpr int kAttributes = 4;

std::vector<std::vector<double>> casesOf(int run, std::size_t count) {
  std::vector<std::vector<double>> cases;
  for (std::size_t i = 0; i < count; ++i) {
    std::vector<double> record = {static_cast<double>((i + static_cast<std::size_t>(run)) % 3)};
    for (int attribute = 1; attribute <= kAttributes; ++attribute) {
      record.push_back(static_cast<double>((i * 7919 + 13) % 1009) * attribute + run);
    }
    cases.push_back(record);
  }
  return cases;
}

/// Every number that comes out of a run; empty when a step failed. Files of other runs that were
/// read or written by mistake would show.
std::vector<double> resultsOf(const std::string& directory, int run, std::size_t count) {
  BINVarList list;
  list.AddCatVar("t", "", 3, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
  for (int attribute = 1; attribute <= kAttributes; ++attribute) {
    list.AddContVar("x" + std::to_string(attribute), "", IBINVariable::AttributeRole);
  }
  VectorCases cases(casesOf(run, count));
  MCBinning::CancelState cancel(nullptr);
  MCBinning::BINDataPreparator preparator(directory, nullptr, 0, cancel, list,
                                          MCBinning::realFileSystem());
  MCBinning::BINAttributeTable table(preparator);
  std::vector<double> results;
  if (!preparator.PrepareData(cases).IsOK()) {
    return {};
  }
  for (int attribute = 1; attribute <= kAttributes; ++attribute) {
    MCBinning::SortedRows* rows = nullptr;
    if (!table.BuildSupervisedTable(attribute, 0, rows).IsOK()) {
      return {};
    }
    for (std::size_t row = 0; row < rows->Size(); ++row) {
      results.push_back(rows->Value(row));
      results.push_back(rows->Code(row));
    }
    results.push_back(table.GetTotalWeight());
  }
  return results;
}

TEST(SharedDirectoryTest, TwoProcessesStartedTogetherAHundredTimesGiveTheResultsOfEachAlone) {
  for (int round = 0; round < 100; ++round) {
    const std::size_t count = round % 10 == 0 ? 12000 : 200;
    const ScratchDirectory directory;
    const ScratchDirectory ownDirectory;
    std::array<std::vector<double>, 2> alone;
    for (int run = 0; run < 2; ++run) {
      alone[static_cast<std::size_t>(run)] = resultsOf(ownDirectory.Path(), run, count);
      ASSERT_FALSE(alone[static_cast<std::size_t>(run)].empty());
    }
    // Both wait for the end of the pipe, so that they start in the same instant.
    std::array<int, 2> start{};
    ASSERT_EQ(pipe(start.data()), 0);
    std::array<pid_t, 2> children{};
    for (int run = 0; run < 2; ++run) {
      children[static_cast<std::size_t>(run)] = StartChild([&] {
        close(start[1]);
        char byte = 0;
        if (read(start[0], &byte, 1) != 0) {
          return 2;
        }
        const auto results = resultsOf(directory.Path(), run, count);
        return results == alone[static_cast<std::size_t>(run)] ? 0 : 1;
      });
    }
    close(start[0]);
    close(start[1]);
    EXPECT_EQ(AnswerOf(children[0]), 0) << "round " << round;
    EXPECT_EQ(AnswerOf(children[1]), 0) << "round " << round;
    EXPECT_TRUE(directory.IsEmpty());
  }
}

TEST(SharedDirectoryTest, TwoRunsOnTwoThreadsGiveTheResultsOfEachAlone) {
  const ScratchDirectory directory;
  const ScratchDirectory ownDirectory;
  for (int round = 0; round < 20; ++round) {
    const std::size_t count = 200 + static_cast<std::size_t>(round % 4) * 5000;
    std::array<std::vector<double>, 2> together;
    {
      std::array<std::thread, 2> threads;
      for (std::size_t run = 0; run < 2; ++run) {
        threads[run] = std::thread([&, run] {
          together[run] = resultsOf(directory.Path(), static_cast<int>(run), count);
        });
      }
      for (std::thread& thread : threads) {
        thread.join();
      }
    }
    for (std::size_t run = 0; run < 2; ++run) {
      EXPECT_FALSE(together[run].empty());
      EXPECT_TRUE(together[run] == resultsOf(ownDirectory.Path(), static_cast<int>(run), count));
    }
    EXPECT_TRUE(directory.IsEmpty());
  }
}

TEST(SharedDirectoryTest, TheNextRunRemovesWhatAKilledProcessLeft) {
  ScratchDirectory directory;
  const pid_t child = StartChild([&] {
    BINVarList list;
    list.AddContVar("x", "", IBINVariable::AttributeRole);
    VectorCases cases({{1}, {2}});
    MCBinning::CancelState cancel(nullptr);
    MCBinning::BINDataPreparator preparator(directory.Path(), nullptr, 0, cancel, list,
                                            MCBinning::realFileSystem());
    preparator.PrepareData(cases);
    _exit(7);
    return 0;
  });
  ASSERT_EQ(AnswerOf(child), 7);
  EXPECT_EQ(directory.Files().size(), 1U);
  EXPECT_FALSE(resultsOf(directory.Path(), 0, 300).empty());
  EXPECT_TRUE(directory.IsEmpty());
}

}  // namespace
