// The equal-frequency algorithm and the host's objects: reports, cancellation.
#include <gtest/gtest.h>

#include <vector>

#include "ef/ef_run.h"
#include "support/host_objects.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {
namespace {

using MCBinning::MCStatus;

TEST(EFBINAlgorithmHostTest, ReportsFollowTheSkippedAttributes) {
  EFRun run(scaleVariables(7));
  RecordingListener listener;
  run->SetProgressListener(&listener);
  EXPECT_EQ(run->GetSettings()->GetProgressListener(), &listener);
  run->GetSettings()->SetNSkippedAttReports(2);
  VectorCases cases(fourRows(7));
  run->Run(cases, nullptr);
  EXPECT_EQ(listener.indexes, (std::vector<int>{2, 5}));
}

TEST(EFBINAlgorithmHostTest, CountdownRestartsFromTheSettingsAsTheyThenStand) {
  EFRun run(scaleVariables(7));
  RecordingListener listener;
  listener.hook = [&] { run->GetSettings()->SetNSkippedAttReports(1); };
  run->SetProgressListener(&listener);
  run->GetSettings()->SetNSkippedAttReports(2);
  VectorCases cases(fourRows(7));
  run->Run(cases, nullptr);
  EXPECT_EQ(listener.indexes, (std::vector<int>{2, 4, 6}));
}

TEST(EFBINAlgorithmHostTest, ReportsOfTheDataPassAndOfEveryAttributeThatDidNotFail) {
  EFRun run(sixVariables());
  RecordingListener listener;
  run->SetProgressListener(&listener);
  run->GetSettings()->SetNSkippedCasesReports(3);
  VectorCases cases(sixVariableRows());
  const std::vector<int> attributes = {-1, kConstant, kOutside, kX};
  run->Run(cases, &attributes);
  EXPECT_EQ(listener.indexes, (std::vector<int>{3, kConstant, kX}));
}

TEST(EFBINAlgorithmHostTest, CancelBeforeRun) {
  EFRun run(scaleVariables(1));
  VectorCases cases(fourRows(1));
  const std::vector<int> attributes = {-1, 0};
  run->Cancel();
  expectStatus(run->GetStatus(), MCStatus());
  expectStatus(run->Run(cases, &attributes), MCStatus(1, false));
  expectStatus(run->GetStatus(), MCStatus(1, false));
  expectStatus(run->Run(cases, nullptr), MCStatus(1, false));
  EXPECT_TRUE(run.Records().empty());
  EXPECT_EQ(cases.HasNextCalls(), 0U);
}

TEST(EFBINAlgorithmHostTest, QueryIsAskedAtFixedPoints) {
  CountingQuery query;
  EFRun run(scaleVariables(3), 2, &query);
  VectorCases cases(fourRows(3));
  run->Run(cases, nullptr);
  // The start, 4 cases and the end of the pass, start and end of 3 attributes, the end.
  EXPECT_EQ(query.Asked(), 13U);
  run->GetStatus();
  EXPECT_EQ(query.Asked(), 13U);
}

TEST(EFBINAlgorithmHostTest, QueryOfTheSettingsIsTakenWhenTheAlgorithmIsMade) {
  CountingQuery query(1);
  EFRun run(scaleVariables(1));
  run->GetSettings()->SetCancelPointer(&query);
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus());
  EXPECT_EQ(query.Asked(), 0U);
}

TEST(EFBINAlgorithmHostTest, CancelAtEveryQuestion) {
  for (std::size_t question = 1; question <= 13; ++question) {
    SCOPED_TRACE(question);
    CountingQuery query(question);
    EFRun run(scaleVariables(3), 2, &query);
    VectorCases cases(fourRows(3));
    expectStatus(run->Run(cases, nullptr), MCStatus(1, false));
    EXPECT_EQ(query.Asked(), question);
    // Questions 7 to 12 stand at the start and the end of each attribute.
    const std::size_t binned = question < 7 ? 0 : (question - 6) / 2;
    const auto records = run.Records();
    EXPECT_EQ(records.size(), binned);
    for (const auto& record : records) {
      expectHalves(record);
    }
    EXPECT_TRUE(run.Directory().IsEmpty());
    expectStatus(run->Run(cases, nullptr), MCStatus(1, false));
    expectStatus(run->GetStatus(), MCStatus(1, false));
    EXPECT_EQ(run.Records().size(), binned);
    EXPECT_EQ(query.Asked(), question);
  }
}

TEST(EFBINAlgorithmHostTest, NothingIsFiledAfterACancel) {
  EFRun run(scaleVariables(2));
  RecordingListener listener;
  listener.hook = [&] { run->Cancel(); };
  run->SetProgressListener(&listener);
  VectorCases cases(fourRows(2));
  const std::vector<int> attributes = {0, -1, 1};
  expectStatus(run->Run(cases, &attributes), MCStatus(1, false));
  EXPECT_EQ(run.Records().size(), 1U);
  EXPECT_EQ(listener.indexes, std::vector<int>{0});
}

TEST(EFBINAlgorithmHostTest, QueryCanBeReplaced) {
  CountingQuery never;
  CountingQuery always(1);
  EFRun run(scaleVariables(1), 2, &never);
  run->SetCancelPointer(&always);
  VectorCases cases(fourRows(1));
  expectStatus(run->Run(cases, nullptr), MCStatus(1, false));
  EXPECT_EQ(never.Asked(), 0U);
  run->SetCancelPointer(nullptr);
  expectStatus(run->Run(cases, nullptr), MCStatus(1, false));
}

}  // namespace
}  // namespace mcbinning_tests
