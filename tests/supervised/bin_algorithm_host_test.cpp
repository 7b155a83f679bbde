// How the algorithm gets on with the host's cancel query, listener and cases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/host_objects.h"
#include "support/supervised_run.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::CountingQuery;
using mcbinning_tests::kSeparatedRows;
using mcbinning_tests::PairRun;
using mcbinning_tests::RecordingListener;
using mcbinning_tests::SupervisedRun;
using testing::ElementsAre;
using testing::IsEmpty;

const MCStatus kCancelled(1, false);

/// `n` scale attributes with the same values as the first of kSeparatedRows, then the target.
struct WideRun : SupervisedRun {
  explicit WideRun(int n) : SupervisedRun(RowsOf(n)) {
    for (int attribute = 0; attribute < n; ++attribute) {
      AddScale(("x" + std::to_string(attribute)).c_str());
    }
    AddTarget(2);
    settings.SetProgressListener(&listener);
  }
  static Rows RowsOf(int n) {
    Rows rows;
    for (const auto& row : kSeparatedRows) {
      rows.emplace_back(static_cast<std::size_t>(n), row[0]);
      rows.back().push_back(row[1]);
    }
    return rows;
  }
  RecordingListener listener;
};

TEST(BINAlgorithmHostTest, CancelBeforeRunEndsItWithoutReadingACase) {
  PairRun run(kSeparatedRows);
  run.Algorithm().Cancel();
  EXPECT_EQ(run.Run(), kCancelled);
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(run.Run(), kCancelled);
  EXPECT_THAT(run.Results(), IsEmpty());
}

TEST(BINAlgorithmHostTest, CancelAtAnyPollEndsTheRunWithCode1AndAsksNoMore) {
  std::size_t polls = 0;
  {
    PairRun run(kSeparatedRows);
    CountingQuery never;
    run.settings.SetCancelPointer(&never);
    EXPECT_TRUE(run.Run().IsOK());
    polls = never.Asked();
  }
  ASSERT_GT(polls, kSeparatedRows.size());
  for (std::size_t due = 1; due <= polls; ++due) {
    SCOPED_TRACE(due);
    PairRun run(kSeparatedRows);
    CountingQuery query(due);
    run.settings.SetCancelPointer(&query);
    EXPECT_EQ(run.Run(), kCancelled);
    EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
    EXPECT_EQ(query.Asked(), due);
    EXPECT_TRUE(run.directory.IsEmpty());
    if (due + 1 < polls) {
      EXPECT_THAT(run.Results(), IsEmpty());
    }
  }
}

TEST(BINAlgorithmHostTest, PairMetAfterACancelIsNeitherFiledNorReported) {
  WideRun run(3);
  run.listener.hook = [&] { run.Algorithm().Cancel(); };
  const std::vector<int> attributes = {0, 99, 1};
  EXPECT_EQ(run.Run(&attributes), kCancelled);
  EXPECT_THAT(run.listener.indexes, ElementsAre(0));
  EXPECT_EQ(run.Results().size(), 1U);
}

TEST(BINAlgorithmHostTest, GetStatusAsksTheHost) {
  PairRun run(kSeparatedRows);
  CountingQuery query(1);
  run.Algorithm().SetCancelPointer(&query);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(query.Asked(), 1U);
  run.Algorithm().SetCancelPointer(nullptr);  // the wish stays
  EXPECT_EQ(run.Run(), kCancelled);
}

TEST(BINAlgorithmHostTest, QueryOfTheSettingsIsTakenWhenTheAlgorithmIsMade) {
  PairRun run(kSeparatedRows);
  CountingQuery query(1);
  run.Algorithm().GetSettings()->SetCancelPointer(&query);
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_EQ(query.Asked(), 0U);
}

TEST(BINAlgorithmHostTest, ReportsEveryAttributeAfterTheSkippedOnes) {
  WideRun run(7);
  run.settings.SetNSkippedAttReports(2);
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_THAT(run.listener.indexes, ElementsAre(2, 5));
}

TEST(BINAlgorithmHostTest, CountdownRestartsFromTheSettingsAsTheyThenStand) {
  WideRun run(7);
  run.settings.SetNSkippedAttReports(2);
  run.listener.hook = [&] { run.Algorithm().GetSettings()->SetNSkippedAttReports(1); };
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_THAT(run.listener.indexes, ElementsAre(2, 4, 6));
}

TEST(BINAlgorithmHostTest, ListenerOfTheAlgorithmHearsOfCasesReadAndOfAttributes) {
  PairRun run(kSeparatedRows);
  run.settings.SetNSkippedCasesReports(4);
  RecordingListener listener;
  run.Algorithm().SetProgressListener(&listener);
  EXPECT_EQ(run.Algorithm().GetSettings()->GetProgressListener(), &listener);
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_THAT(listener.indexes, ElementsAre(4, 0));
}

TEST(BINAlgorithmHostTest, AttributeThatEndsInErrorIsNotReported) {
  WideRun run(3);
  run.list.SetVariableRole(1, IBINVariable::UndefinedRole);  // no column, hence an error
  run.settings.SetNSkippedAttReports(1);
  run.Run();
  EXPECT_THAT(run.listener.indexes, ElementsAre(2));
}

TEST(BINAlgorithmHostTest, RefusedPairIsNoAttributeOfTheCountdown) {
  WideRun run(3);
  run.settings.SetNSkippedAttReports(1);
  const std::vector<int> attributes = {0, 99, 1, 2};
  run.Run(&attributes);
  EXPECT_THAT(run.listener.indexes, ElementsAre(1));
}

TEST(BINAlgorithmHostTest, GetStatusNamesAQueryThatThrowsAndForgetsIt) {
  PairRun run(kSeparatedRows);
  CountingQuery query;
  query.ThrowAt(1);
  run.Algorithm().SetCancelPointer(&query);
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(3, false));
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
}

}  // namespace
