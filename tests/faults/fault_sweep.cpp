#include "faults/fault_sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "system/process.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

const MCStatus kSomeRecordNotOK(120018, true);
const MCStatus kSpoiled(3, false);
constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

}  // namespace

bool IsFullSweep() {
  const char* full = std::getenv("MCB_FULL_SWEEP");
  return full != nullptr && std::string(full) == "1";
}

FaultSweep::FaultSweep(const Scenario& scenario, const FaultKind& kind)
    : kind_(kind), scenario_(scenario), cases_(CasesOf(scenario)) {
  const auto stage = MakeStage();
  EXPECT_TRUE(stage->use->Create().IsOK());
  right_.status = stage->use->Run();
  right_.records = stage->use->Read();
  EXPECT_FALSE(right_.status.IsError());
  EXPECT_GT(right_.records.size(), 2U);
}

std::unique_ptr<Stage> FaultSweep::MakeStage() const {
  auto stage = std::make_unique<Stage>(cases_);
  stage->use =
      MakeUse(scenario_, stage->host, directory_.Path(), kind_.overFiles ? &stage->files : nullptr);
  return stage;
}

SweepFigures FaultSweep::Run(std::size_t limit) {
  SCOPED_TRACE(NameOf(scenario_));
  SweepFigures figures;
  figures.points = Try(kNever);
  const std::size_t stride = std::max<std::size_t>(1, (figures.points + limit - 1) / limit);
  for (std::size_t number = 1; number <= figures.points; number += stride) {
    EXPECT_GE(Try(number), number);
    ++figures.tried;
    if (testing::Test::HasFailure()) {
      return figures;  // the first one tells enough
    }
  }
  EXPECT_LE(Try(figures.points + 1), figures.points);
  return figures;
}

/// Answers how many calls there were that could have failed.
std::size_t FaultSweep::Try(std::size_t number) {
  SCOPED_TRACE(kind_.name + ", point " + std::to_string(number));
  const std::size_t allocationsBefore = LiveAllocations();
  const std::ptrdiff_t filesBefore = OpenFiles();
  Calls calls;
  {
    const auto stage = MakeStage();
    UseAndCheck(*stage, number, calls);
    stage->use.reset();
    if (!kind_.disarm) {
      calls.all = kind_.calls(*stage);
    }
    EXPECT_EQ(stage->files.OpenFiles(), 0U);
  }
  EXPECT_TRUE(directory_.IsEmpty());
  CheckNewUse();
  EXPECT_EQ(LiveAllocations(), allocationsBefore);
  EXPECT_EQ(OpenFiles(), filesBefore);
  return calls.all;
}

void FaultSweep::UseAndCheck(Stage& stage, std::size_t number, Calls& calls) {
  Use& use = *stage.use;
  Answer answer;
  MCStatus status;
  kind_.arm(stage, number);
  const MCStatus created = use.Create();
  calls.created = kind_.calls(stage);
  if (use.Exists()) {
    answer.status = use.Run();
    calls.ran = kind_.calls(stage);
    status = use.GetStatus();
    try {
      use.Read();
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(stage.allocations.has_value());
    }
  }
  calls.all = kind_.calls(stage);
  if (kind_.disarm) {
    kind_.disarm(stage);
  }

  const bool struckCreation = number <= calls.created;
  EXPECT_EQ(created, struckCreation ? kind_.named : MCStatus());
  EXPECT_EQ(use.Exists(), !struckCreation);
  if (struckCreation) {
    EXPECT_TRUE(use.Create().IsOK());
    CheckNextRun(stage, {});
    return;
  }
  answer.records = use.Read();
  CheckRun(stage, answer, number <= calls.ran);
  CheckAfterRun(stage, number, calls, status, answer);
}

void FaultSweep::CheckAfterRun(Stage& stage, std::size_t number, const Calls& calls,
                               const MCStatus& status, const Answer& answer) {
  if (kind_.endsTheRun && number > calls.ran && number <= calls.all) {
    EXPECT_EQ(status, kind_.named);
  }
  if (kind_.cancels && number <= calls.all) {
    EXPECT_EQ(stage.use->Run(), kind_.named);
    EXPECT_EQ(calls.all, number);
    EXPECT_EQ(stage.host.Calls(HostCall::CancelQuery), 0U) << "asked again";
    EXPECT_TRUE(directory_.IsEmpty());
  } else {
    CheckNextRun(stage, answer);
  }
}

void FaultSweep::CheckRun(const Stage& stage, const Answer& answer, bool struck) {
  const bool ended = answer.status.IsError();
  const auto& records = answer.records;
  ASSERT_LE(records.size(), right_.records.size());
  bool isRight = true;
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_TRUE(IsRightOrSpoiled(records[i], i)) << "record " << i;
    isRight = isRight && records[i] == right_.records[i];
  }
  EXPECT_TRUE(isRight || (struck && !kind_.endsTheRun));
  if (ended) {
    EXPECT_TRUE(struck);
    EXPECT_EQ(answer.status, kind_.named);
    EXPECT_TRUE(directory_.IsEmpty());
  } else {
    EXPECT_FALSE(struck && kind_.endsTheRun);
    EXPECT_EQ(records.size(), right_.records.size());
    EXPECT_EQ(answer.status, isRight ? right_.status : kSomeRecordNotOK);
  }
  EXPECT_EQ(stage.files.OpenFiles(), 0U);
}

/// The same object runs once more and adds its records to those that it has.
void FaultSweep::CheckNextRun(Stage& stage, const Answer& before) {
  const MCStatus status = stage.use->Run();
  const std::vector<ResultRecord> records = stage.use->Read();
  const std::size_t earlier = before.records.size();
  ASSERT_EQ(records.size(), earlier + right_.records.size());
  const bool wasSpoiled =
      std::any_of(before.records.begin(), before.records.end(),
                  [](const ResultRecord& record) { return record.status == kSpoiled; });
  EXPECT_EQ(status, wasSpoiled ? kSomeRecordNotOK : right_.status);
  for (std::size_t i = 0; i < right_.records.size(); ++i) {
    const bool stayedLost = kind_.losesValues && !before.status.IsError() && i < earlier &&
                            records[earlier + i] == before.records[i];
    EXPECT_TRUE(records[earlier + i] == right_.records[i] || stayedLost) << "record " << i;
  }
}

void FaultSweep::CheckNewUse() {
  const auto stage = MakeStage();
  EXPECT_TRUE(stage->use->Create().IsOK());
  EXPECT_EQ(stage->use->Run(), right_.status);
  EXPECT_TRUE(stage->use->Read() == right_.records);
}

/// A spoiled record says so and has no figures that could be taken for results.
bool FaultSweep::IsRightOrSpoiled(const ResultRecord& record, std::size_t position) const {
  const ResultRecord& right = right_.records[position];
  const bool isSpoiled =
      record.status == kSpoiled && record.indexes == right.indexes && record.figures.front() == 0;
  return isSpoiled || record == right;
}

}  // namespace mcbinning_tests
