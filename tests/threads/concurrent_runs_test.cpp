// Algorithms of both kinds at work at the same time, in one process and over one temporary
// directory. The thread sanitizer sees what they share; without it the results would show.
#include <gtest/gtest.h>
#include <mcbinning/mcbinning.h>
#include <mccomvor/missing_value.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "random/random_runs.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace {

using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::VectorCases;
using Numbers = std::vector<double>;

constexpr std::size_t kThreads = 4;
constexpr int kRounds = 3;
constexpr int kCases = 12000;  // columns are written to their files in several portions

enum Variable { kTarget, kWeight, kFirstScale, kSecondScale, kCodes };

// The codes of the target are known to its encoder only, as after a host's own pass over the data.
BINVarList makeList() {
  BINVarList list;
  list.AddCatVar("target", "", 0, IBINVariable::NumericCategoricalLevel, IBINVariable::TargetRole);
  for (const double value : {10.0, 20.0, 30.0}) {
    static_cast<BINCatNumEncoder*>(list.GetEncoderAt(kTarget))->Encode(value);
  }
  list.AddWeightVar("weight", "", IBINVariable::RoundToClosestInt);
  list.AddContVar("first", "", IBINVariable::AttributeRole);
  list.AddContVar("second", "", IBINVariable::AttributeRole);
  list.AddCatVar("codes", "", {"a", "b", "c", "d"}, IBINVariable::AttributeRole);
  list.AddDiscreteUserMissing(kFirstScale, 7.0, "");
  list.SetMissingInterval(kWeight, 4.0, 4.5);
  return list;
}

// Every thread has cases of its own, so that a mix-up of files shows.
std::vector<std::vector<double>> makeCases(std::uint64_t seed) {
  mcbinning_tests::Choices choices(seed);
  const auto below = [&choices](int n) { return static_cast<double>(choices.Below(n)); };
  std::vector<std::vector<double>> cases;
  for (int i = 0; i < kCases; ++i) {
    const double target = below(3);
    const double second = below(9) == 0.0 ? MCMV::gMissingValue : below(5000) + 900.0 * target;
    cases.push_back({target, below(10) / 2.0, below(12) + target, second, below(4)});
  }
  return cases;
}

void append(Numbers& numbers, const Numbers& more) {
  numbers.push_back(static_cast<double>(more.size()));
  numbers.insert(numbers.end(), more.begin(), more.end());
}

template <typename Record>
void appendCommon(Numbers& numbers, const Record& record) {
  append(numbers, record.GetCutPoints());
  append(numbers, {static_cast<double>(record.GetStatus().GetErrorCode()),
                   static_cast<double>(record.GetNDistinctValues()), record.GetTotalWeight(),
                   record.GetTotalWeightWithMissing(), record.GetMinimum(), record.GetMaximum()});
}

Numbers runSupervised(BINVarList& list, BINSettings& settings, VectorCases& cases) {
  BINFactory factory;
  const std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, list));
  algorithm->Run(cases, nullptr, nullptr);
  std::vector<BINAttributeTargetResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  Numbers numbers;
  for (const BINAttributeTargetResults& record : records) {
    appendCommon(numbers, record);
    for (const Numbers& counts : record.GetCellCounts()) {
      append(numbers, counts);
    }
    numbers.push_back(record.GetModelEntropy());
  }
  return numbers;
}

Numbers runEqualFrequency(BINVarList& list, EFBINSettings& settings, VectorCases& cases) {
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(factory.CreateEFBINAlgorithm(settings, list));
  algorithm->Run(cases, nullptr);
  std::vector<BINAttributeResults> records;
  algorithm->GetOutput()->GetAllCutPoints(records);
  Numbers numbers;
  for (const BINAttributeResults& record : records) {
    appendCommon(numbers, record);
    append(numbers, record.GetCellCounts());
  }
  return numbers;
}

// The list and the settings from which every thread makes its algorithms.
struct Source {
  explicit Source(const std::string& directory) {
    supervised.SetTempDirName(directory);
    supervised.SetNumberOfBins(50);
    supervised.SetNumDistinctValueThreshold(1000);
    supervised.SetSmallBinDetectionThreshold(0.5);
    equalFrequency.SetTempDirName(directory);
    equalFrequency.SetNumberOfBins(8);
  }

  Numbers Run(std::size_t thread, VectorCases& cases) {
    cases.Restart();
    return thread % 2 == 0 ? runSupervised(list, supervised, cases)
                           : runEqualFrequency(list, equalFrequency, cases);
  }

  BINVarList list = makeList();
  BINSettings supervised;
  EFBINSettings equalFrequency;
};

// Calls `work` with the number of each thread, in all of them at the same time.
template <typename Work>
void inThreads(Work work) {
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      start.arrive_and_wait();
      work(thread);
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

TEST(ConcurrentRuns, GiveTheResultsOfRunsOneAfterAnother) {
  const ScratchDirectory directory;
  Source source(directory.Path());
  std::vector<VectorCases> cases;
  const std::uint64_t seed = mcbinning_tests::RandomRuns(1).seed;
  std::array<Numbers, kThreads> alone;
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    cases.emplace_back(makeCases(seed + thread));
    alone[thread] = source.Run(thread, cases[thread]);
    ASSERT_GT(alone[thread].size(), 50U);
  }
  std::array<std::array<Numbers, kRounds>, kThreads> together;
  inThreads([&](std::size_t thread) {
    for (Numbers& numbers : together[thread]) {
      numbers = source.Run(thread, cases[thread]);
    }
  });
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    for (const Numbers& numbers : together[thread]) {
      EXPECT_EQ(numbers, alone[thread]) << "thread " << thread;
    }
  }
}

// To the sanitizer every operation on a file orders the threads, so this one stays without a run.
TEST(ConcurrentRuns, CanBeMadeFromOneListWhoseNumbersOfCategoriesAreUpToDate) {
  Source source("");
  source.list.UpdateNumbersOfCategories();
  std::array<int, kThreads> made{};
  inThreads([&](std::size_t thread) {
    for (int i = 0; i < 20; ++i) {
      BINFactory factory;
      EFBINFactory equalFrequencyFactory;
      const std::unique_ptr<IBINAlgorithm> algorithm(
          factory.CreateBINAlgorithm(source.supervised, source.list));
      const std::unique_ptr<IEFBINAlgorithm> other(
          equalFrequencyFactory.CreateEFBINAlgorithm(source.equalFrequency, source.list));
      made[thread] += algorithm != nullptr && other != nullptr ? 1 : 0;
    }
  });
  EXPECT_EQ(made, (std::array<int, kThreads>{20, 20, 20, 20}));
}

}  // namespace
