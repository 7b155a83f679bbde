// Many processes over one temporary directory, of which some are killed.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "faults/use.h"
#include "support/scratch_directory.h"
#include "system/child_process.h"

namespace mcbinning_tests {
namespace {

constexpr std::size_t kProcesses = 12;
constexpr std::size_t kVictims = 4;
constexpr int kRounds = 4;
constexpr std::chrono::milliseconds kLongestWait{1000};
constexpr unsigned kSeed = 20240;

/// The records of one use; nothing when it failed. Data are a process's own, which shows when files
/// are mixed up.
std::vector<ResultRecord> recordsOf(std::size_t process, const std::string& directory) {
  Scenario scenario{Algorithm::Supervised, 22500 + 10 * process, process % 2 == 0};
  scenario.seed = kSeed + 100 * process;
  const auto cases = CasesOf(scenario);
  FaultyHost host(cases);
  const auto use = MakeUse(scenario, host, directory);
  if (!use->Create().IsOK() || use->Run().IsError()) {
    return {};
  }
  return use->Read();
}

/// The task is the process's number, its rounds and the directory.
TEST(KilledProcessesChild, IsRight) {
  std::istringstream task(TaskOfChild());
  std::size_t process = 0;
  int rounds = 0;
  std::string directory;
  if (!(task >> process >> rounds && std::getline(task >> std::ws, directory))) {
    return;
  }
  const ScratchDirectory ownDirectory;
  const auto right = recordsOf(process, ownDirectory.Path());
  ASSERT_GT(right.size(), 2U);
  for (int round = 0; round < rounds; ++round) {
    ASSERT_TRUE(recordsOf(process, directory) == right);
  }
}

TEST(KilledProcessesTest, TheOthersAreRightAndTheNextRunRemovesWhatIsLeft) {
  const ScratchDirectory directory;
  std::vector<ChildProcess> children;
  children.reserve(kProcesses);
  for (std::size_t process = 0; process < kProcesses; ++process) {
    const int rounds = process < kVictims ? 1000 * kRounds : kRounds;
    children.emplace_back(
        "KilledProcessesChild.IsRight",
        std::to_string(process) + " " + std::to_string(rounds) + " " + directory.Path());
  }
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> share(0.5, 1.0);
  for (std::size_t victim = 0; victim < kVictims; ++victim) {
    std::this_thread::sleep_for(share(random) * kLongestWait);
    EXPECT_TRUE(children[victim].Kill());
  }
  for (std::size_t process = 0; process < kProcesses; ++process) {
    EXPECT_EQ(children[process].Answer(), process < kVictims ? ChildProcess::kKilled : 0U)
        << process;
  }
  std::printf("faults: processes: %zu over one directory, %zu killed, left %zu files\n", kProcesses,
              kVictims, directory.Files().size());
  EXPECT_GT(recordsOf(0, directory.Path()).size(), 2U);
  EXPECT_TRUE(directory.IsEmpty());
}

}  // namespace
}  // namespace mcbinning_tests
