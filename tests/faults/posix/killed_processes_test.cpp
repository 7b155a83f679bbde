// Many processes over one temporary directory, of which some are killed.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <new>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include "faults/noting_file_system.h"
#include "faults/use.h"
#include "random/random_runs.h"
#include "support/scratch_directory.h"
#include "system/child_process.h"

namespace mcbinning_tests {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr std::size_t kProcesses = 50;
constexpr std::size_t kVictims = 17;
constexpr Seconds kWork{6.0};  // processor time that all processes together take at least

using Cases = std::vector<std::vector<double>>;

/// The records of one use; nothing when it failed.
std::vector<ResultRecord> recordsOf(const Scenario& scenario, const Cases& cases,
                                    const std::string& directory, FileNotes& notes) {
  NotingFileSystem files(notes);
  FaultyHost host(cases);
  const auto use = MakeUse(scenario, host, directory, &files);
  if (!use->Create().IsOK() || use->Run().IsError()) {
    return {};
  }
  return use->Read();
}

/// Notes of all processes, in memory that they share.
class SharedNotes {
 public:
  SharedNotes()
      : memory_(
            mmap(nullptr, sizeof(All), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
        all_(memory_ != MAP_FAILED ? new (memory_) All : nullptr) {}
  SharedNotes(const SharedNotes&) = delete;
  SharedNotes& operator=(const SharedNotes&) = delete;
  ~SharedNotes() { munmap(memory_, sizeof(All)); }

  FileNotes& Of(std::size_t process) { return all_->at(process); }

 private:
  using All = std::array<FileNotes, kProcesses>;
  void* memory_;
  All* all_;
};

constexpr std::array<Algorithm, 2> kAlgorithms = {Algorithm::Supervised, Algorithm::EqualFrequency};

/// One after the other, each of the processes' own uses; then all of them at once.
class KilledProcessesTest : public testing::Test {
 protected:
  KilledProcessesTest() : order_(kProcesses) {
    std::iota(order_.begin(), order_.end(), 0U);
    choices_.Shuffle(order_);
    Seconds once{};
    for (std::size_t process = 0; process < kProcesses; ++process) {
      for (const Algorithm algorithm : kAlgorithms) {
        const Scenario scenario = ScenarioOf(process, algorithm);
        const Cases cases = CasesOf(scenario);
        const auto begin = Clock::now();
        right_[process].push_back(
            recordsOf(scenario, cases, ownDirectory_.Path(), notes_.Of(process)));
        once += Clock::now() - begin;
        EXPECT_GT(right_[process].back().size(), 2U);
        notes_.Of(process).Clear();
      }
    }
    rounds_ = 1 + static_cast<int>(kWork / once);
    expected_ = once * rounds_ / std::max(1U, std::thread::hardware_concurrency());
  }

  /// Data that are a process's own, which shows when files are mixed up.
  Scenario ScenarioOf(std::size_t process, Algorithm algorithm) const {
    Scenario scenario{algorithm, 22500 + 10 * process, process % 2 == 0};
    scenario.seed = seed_ + 100 * process;
    return scenario;
  }

  bool IsVictim(std::size_t process) const { return order_[process] < kVictims; }

  /// All begin when the last one is there.
  void Start() {
    std::array<int, 2> start{};
    ASSERT_EQ(pipe(start.data()), 0);
    for (std::size_t process = 0; process < kProcesses; ++process) {
      children_[process] = StartChild([&] {
        close(start[1]);
        return Process(process, start[0]);
      });
    }
    close(start[0]);
    close(start[1]);
  }

  /// 0 when every result was right and every file was removed. A victim would go on for long.
  int Process(std::size_t process, int start) {
    const std::array<Cases, 2> cases = {CasesOf(ScenarioOf(process, kAlgorithms[0])),
                                        CasesOf(ScenarioOf(process, kAlgorithms[1]))};
    FileNotes& notes = notes_.Of(process);
    char byte = 0;
    if (read(start, &byte, 1) != 0) {
      return 2;
    }
    const int rounds = IsVictim(process) ? 50 * rounds_ : rounds_;
    for (int round = 0; round < rounds; ++round) {
      for (std::size_t i = 0; i < kAlgorithms.size(); ++i) {
        if (recordsOf(ScenarioOf(process, kAlgorithms[i]), cases[i], directory_.Path(), notes) !=
            right_[process][i]) {
          return 1;
        }
        if (!notes.AllRemoved()) {
          return 3;
        }
        notes.Clear();
      }
    }
    return 0;
  }

  /// Kills the victims at random times while the others work.
  void Kill() {
    std::vector<double> times(kVictims);
    std::generate(times.begin(), times.end(), [&] { return 0.9 * choices_.Unit(); });
    std::sort(times.begin(), times.end());
    const auto begin = Clock::now();
    auto time = times.begin();
    for (std::size_t process = 0; process < kProcesses; ++process) {
      if (IsVictim(process)) {
        std::this_thread::sleep_until(
            begin + std::chrono::duration_cast<Clock::duration>(expected_ * *time++));
        EXPECT_EQ(kill(children_[process], SIGKILL), 0);
      }
    }
  }

  /// Sorts the processes by how they ended.
  void Wait() {
    for (std::size_t process = 0; process < kProcesses; ++process) {
      int state = 0;
      ASSERT_EQ(waitpid(children_[process], &state, 0), children_[process]);
      if (WIFSIGNALED(state) && WTERMSIG(state) == SIGKILL && IsVictim(process)) {
        killed_.push_back(process);
      } else {
        EXPECT_TRUE(WIFEXITED(state) && WEXITSTATUS(state) == 0) << "process " << process;
        EXPECT_EQ(notes_.Of(process).count, 0U);
      }
    }
  }

  std::size_t KilledIn(Phase phase) {
    return static_cast<std::size_t>(
        std::count_if(killed_.begin(), killed_.end(),
                      [&](std::size_t process) { return notes_.Of(process).phase == phase; }));
  }

  /// Whether a file of that name is what a killed process left.
  bool IsLeft(const std::string& name) {
    return std::any_of(killed_.begin(), killed_.end(), [&](std::size_t process) {
      return notes_.Of(process).Find(name) != nullptr;
    });
  }

  ScratchDirectory directory_;
  ScratchDirectory ownDirectory_;
  SharedNotes notes_;
  std::uint64_t seed_ = RandomRuns(1).seed;
  Choices choices_{seed_};
  std::vector<std::size_t> order_;
  std::array<std::vector<std::vector<ResultRecord>>, kProcesses> right_;
  int rounds_ = 0;
  Seconds expected_{};
  std::array<pid_t, kProcesses> children_{};
  std::vector<std::size_t> killed_;
};

TEST_F(KilledProcessesTest, TheOthersAreRightAndLeaveNothing) {
  Start();
  Kill();
  Wait();
  const auto left = directory_.Files();
  std::printf(
      "faults: processes: %zu over one directory, %d rounds each, seed %llu; %zu killed in a run, "
      "%zu of them in the pass and %zu in the search, left %zu files\n",
      kProcesses, rounds_, static_cast<unsigned long long>(seed_), killed_.size(),
      KilledIn(Phase::Pass), KilledIn(Phase::Search), left.size());
  EXPECT_EQ(killed_.size(), kVictims);
  EXPECT_GT(KilledIn(Phase::Pass) + KilledIn(Phase::Search), 0U);
  // The others removed what they found, the next run removes the rest.
  for (const std::string& name : left) {
    EXPECT_TRUE(IsLeft(name)) << name;
  }
  const Scenario scenario = ScenarioOf(0, kAlgorithms[0]);
  EXPECT_TRUE(recordsOf(scenario, CasesOf(scenario), directory_.Path(), notes_.Of(0)) ==
              right_[0][0]);
  EXPECT_TRUE(directory_.IsEmpty());
}

}  // namespace
}  // namespace mcbinning_tests
