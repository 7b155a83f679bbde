// Every allocation, file operation and call into the host that a use of an algorithm makes is made
// to fail in turn. Prints how many.
#include "faults/fault_sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iostream>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace mcbinning_tests {

void PrintTo(const FaultKind& kind, std::ostream* os) { *os << kind.name; }

namespace {

using MCBinning::MCStatus;
using MCBinning::NameState;

constexpr std::size_t kSmall = 60;
constexpr std::size_t kLarge = 22500;  // more than 20,000 used: two full buffers and a rest

FaultKind allocationFault(const char* name, bool onlyOne) {
  FaultKind kind;
  kind.name = name;
  kind.arm = [onlyOne](Stage& stage, std::size_t number) {
    stage.allocations.emplace(number, onlyOne ? number : std::numeric_limits<std::size_t>::max());
  };
  kind.calls = [](const Stage& stage) { return stage.allocations->Made(); };
  kind.disarm = [](Stage& stage) { stage.allocations.reset(); };
  kind.named = MCStatus(3, false);
  return kind;
}

FaultKind fileFault(const char* name, FileOperation operation) {
  FaultKind kind;
  kind.name = name;
  kind.arm = [operation](Stage& stage, std::size_t number) {
    stage.files.FailAt(operation, number);
  };
  kind.calls = [operation](const Stage& stage) { return stage.files.Calls(operation); };
  if (operation != FileOperation::Remove) {
    kind.disarm = [operation](Stage& stage) { stage.files.FailAt(operation, 0); };
  }
  kind.named = MCStatus(120021, false);
  kind.losesValues = true;
  kind.overFiles = true;
  return kind;
}

FaultKind probeFault(const char* name, NameState state, long code) {
  FaultKind kind = fileFault(name, FileOperation::Probe);
  kind.arm = [state](Stage& stage, std::size_t number) {
    stage.files.FailAt(FileOperation::Probe, number);
    stage.files.FailProbeWith(state);
  };
  kind.named = MCStatus(code, false);
  kind.endsTheRun = state != NameState::Taken;
  return kind;
}

FaultKind hostFault(const std::string& name, HostCall call, HostFault fault) {
  FaultKind kind;
  kind.name = name;
  kind.arm = [call, fault](Stage& stage, std::size_t number) {
    stage.host.FailAt(call, number, fault);
  };
  kind.calls = [call](const Stage& stage) { return stage.host.Calls(call); };
  kind.disarm = [call, fault](Stage& stage) { stage.host.FailAt(call, 0, fault); };
  kind.cancels = fault == HostFault::True;
  kind.named = MCStatus(kind.cancels ? 1 : 3, false);
  kind.endsTheRun = true;
  return kind;
}

std::vector<FaultKind> everyKind() {
  std::vector<FaultKind> kinds = {
      allocationFault("allocation", true),
      allocationFault("allocation and all later ones", false),
      probeFault("probe, no file handle left", NameState::TooManyOpenFiles, 120021),
      probeFault("probe, directory refused", NameState::DirectoryRefused, 120021),
      probeFault("probe, no directory", NameState::NoDirectory, 120001),
      probeFault("probe, name taken", NameState::Taken, 120021),
      fileFault("claim", FileOperation::Claim),
      fileFault("create", FileOperation::Create),
      fileFault("open to append", FileOperation::OpenForAppend),
      fileFault("open to read", FileOperation::OpenForReading),
      fileFault("write", FileOperation::Write),
      fileFault("read", FileOperation::Read),
      fileFault("seek", FileOperation::Seek),
      fileFault("close", FileOperation::Close),
      fileFault("remove", FileOperation::Remove),
      hostFault("cancel query true", HostCall::CancelQuery, HostFault::True),
  };
  const std::pair<const char*, HostCall> calls[] = {{"HasNext", HostCall::HasNext},
                                                    {"Next", HostCall::Next},
                                                    {"record cell", HostCall::CellQuery},
                                                    {"listener", HostCall::Report},
                                                    {"cancel query", HostCall::CancelQuery}};
  for (const auto& [name, call] : calls) {
    kinds.push_back(
        hostFault(std::string(name) + " throws an exception", call, HostFault::Exception));
    kinds.push_back(hostFault(std::string(name) + " throws an int", call, HostFault::NoException));
  }
  return kinds;
}

/// Both ways to weigh and to select.
SweepFigures sweepBoth(Algorithm algorithm, std::size_t cases, const FaultKind& kind,
                       std::size_t limit) {
  SweepFigures sum;
  for (const bool wholeWeights : {true, false}) {
    const SweepFigures figures = FaultSweep({algorithm, cases, wholeWeights}, kind).Run(limit);
    sum.points += figures.points;
    sum.tried += figures.tried;
  }
  return sum;
}

class FaultSweepTest : public testing::TestWithParam<FaultKind> {
 protected:
  void Sweep(std::size_t cases, std::size_t limit) {
    // The library tells of a column without a file there, too.
    std::streambuf* console = std::cout.rdbuf(nullptr);
    const auto supervised = sweepBoth(Algorithm::Supervised, cases, GetParam(), limit);
    const auto equalFrequency = sweepBoth(Algorithm::EqualFrequency, cases, GetParam(), limit);
    std::cout.rdbuf(console);
    std::printf("faults: %s, %zu cases: supervised %zu of %zu points, equal frequency %zu of %zu\n",
                GetParam().name.c_str(), cases, supervised.tried, supervised.points,
                equalFrequency.tried, equalFrequency.points);
    const std::string property = "points_tried_" + std::to_string(cases);
    RecordProperty(property, static_cast<int>(supervised.tried + equalFrequency.tried));
    if (GetParam().name == "seek") {
      EXPECT_EQ(supervised.points + equalFrequency.points, 0U);  // no run goes back in a file
    } else if (GetParam().name == "claim") {
      EXPECT_GE(supervised.tried + equalFrequency.tried, 4U);  // one for each reading of the cases
    } else if (GetParam().name != "open to append" || cases == kLarge) {
      EXPECT_GE(supervised.tried, 10U);
      EXPECT_GE(equalFrequency.tried, 10U);
    }
  }
};

TEST_P(FaultSweepTest, NamesTheFaultOrIsRightAndLeavesNothing) {
  constexpr std::size_t kEveryPoint = std::numeric_limits<std::size_t>::max() / 2;
  Sweep(kSmall, IsFullSweep() ? kEveryPoint : 100);
  Sweep(kLarge, IsFullSweep() ? 400 : 12);
}

std::string testName(const testing::TestParamInfo<FaultKind>& info) {
  std::string name = info.param.name;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, FaultSweepTest, testing::ValuesIn(everyKind()), testName);

std::vector<ResultRecord> resultsOf(const Scenario& scenario) {
  const ScratchDirectory directory;
  const auto cases = CasesOf(scenario);
  FaultyHost host(cases);
  const auto use = MakeUse(scenario, host, directory.Path());
  EXPECT_TRUE(use->Create().IsOK());
  EXPECT_FALSE(use->Run().IsError());
  return use->Read();
}

TEST(FaultScenarioTest, SmallBinsAreMergedAndPreBinsMade) {
  for (const bool wholeWeights : {true, false}) {
    for (const std::size_t cases : {kSmall, kLarge}) {
      Scenario scenario{Algorithm::Supervised, cases, wholeWeights};
      SCOPED_TRACE(NameOf(scenario));
      const auto results = resultsOf(scenario);
      scenario.smallBinThreshold = 0.0;
      const auto unmerged = resultsOf(scenario);
      EXPECT_LT(results[0].figures[0], unmerged[0].figures[0]);
      scenario.distinctValueThreshold = 0;
      EXPECT_NE(resultsOf(scenario)[1], unmerged[1]);
    }
  }
}

}  // namespace
}  // namespace mcbinning_tests
