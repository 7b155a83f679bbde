#include "supervised/bin_algorithm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "support/supervised_run.h"
#include "support/virtual_slots.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::FileOperation;
using mcbinning_tests::SupervisedRun;
using testing::ElementsAre;
using testing::IsEmpty;

const MCStatus kCancelled(1, false);
const MCStatus kException(3, false);
const MCStatus kSomePairNotOK(120018, true);

const SupervisedRun::Rows kRows = {{1, 0}, {2, 0}, {3, 0}, {4, 1}, {5, 1}, {6, 1}};

/// Answers true, or throws, at its call of a given number (from 1).
class CountingQuery : public MCQueryCancel {
 public:
  explicit CountingQuery(std::size_t due, bool throws = false) : due_(due), throws_(throws) {}
  bool IsCancelled() override {
    const bool isDue = ++calls_ == due_;
    if (isDue && throws_) {
      throw std::runtime_error("the host failed");
    }
    return isDue;
  }
  std::size_t Calls() const { return calls_; }

 private:
  std::size_t due_;
  bool throws_;
  std::size_t calls_ = 0;
};

/// Keeps the indexes that it is told.
class RecordingListener : public ProgressListener {
 public:
  void ReportProgress(ProgressReport& report) override {
    indexes.push_back(report.DiscreteMeasure("IndexVar"));
    if (throws) {
      throw std::runtime_error("the host failed");
    }
  }
  std::vector<int> indexes;
  bool throws = false;
};

/// Index 0 is the scale attribute, index 1 the target of two categories.
struct FrameRun : SupervisedRun {
  explicit FrameRun(const Rows& rows = kRows) : SupervisedRun(rows) {
    AddScale("x");
    AddTarget(2);
  }
};

/// `n` scale attributes with the same values as the first of kRows, then the target.
struct WideRun : SupervisedRun {
  explicit WideRun(int n) : SupervisedRun(RowsOf(n)), target(n) {
    for (int attribute = 0; attribute < n; ++attribute) {
      AddScale(("x" + std::to_string(attribute)).c_str());
    }
    AddTarget(2);
    settings.SetProgressListener(&listener);
  }
  static Rows RowsOf(int n) {
    Rows rows;
    for (const auto& row : kRows) {
      rows.emplace_back(static_cast<std::size_t>(n), row[0]);
      rows.back().push_back(row[1]);
    }
    return rows;
  }
  int target;
  RecordingListener listener;
};

std::vector<MCStatus> statusesOf(const std::vector<BINAttributeTargetResults>& results) {
  std::vector<MCStatus> statuses;
  for (const auto& result : results) {
    statuses.push_back(result.GetStatus());
  }
  return statuses;
}

TEST(BINAlgorithmTest, VersionIsTheFixedBanner) {
  FrameRun run;
  EXPECT_EQ(run.Algorithm().GetVersion(),
            "Supervised Binning Component Ver. 1.0 (entropy and EF binning)");
  EXPECT_EQ(run.Algorithm().GetVersion().size(), 62U);
}

TEST(BINAlgorithmTest, GetVarListHasTheSlotAfterThoseOfTheInterface) {
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&BINAlgorithm::Display), 9U);
  EXPECT_EQ(mcbinning_tests::VirtualSlot(&BINAlgorithm::GetVarList), 10U);
}

TEST(BINAlgorithmTest, WorksOnItsOwnCopiesOfSettingsAndList) {
  FrameRun run;
  BINAlgorithm& algorithm = run.Algorithm();
  EXPECT_NE(algorithm.GetSettings(), &run.settings);
  EXPECT_NE(algorithm.GetVarList(), &run.list);
  EXPECT_EQ(*algorithm.GetSettings(), run.settings);
  run.settings.SetNumberOfBins(77);
  run.list.RemoveVar(1);
  EXPECT_EQ(algorithm.GetSettings()->GetNumberOfBins(), 10);
  EXPECT_EQ(algorithm.GetVarList()->Size(), 2U);
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, NumberOfBinsNotSetIsError120009AndCanBeMended) {
  FrameRun run;
  run.settings = BINSettings();
  run.settings.SetTempDirName(run.directory.Path());
  const std::vector<int> refused = {99};
  EXPECT_EQ(run.Run(nullptr, &refused), MCStatus(120009, false));
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
  EXPECT_TRUE(run.Algorithm().GetSettings()->SetNumberOfBins(2));
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, UnusableSelectionIsError120008BeforeAnyCaseIsRead) {
  FrameRun run;
  const std::vector<int> none;
  const std::vector<int> one = {0};
  const std::vector<int> two = {1, 1};
  const MCStatus unusable(120008, false);
  EXPECT_EQ(run.Run(&one, &two), unusable);     // lengths differ
  EXPECT_EQ(run.Run(nullptr, &one), unusable);  // targets alone
  EXPECT_EQ(run.Run(&none, &none), unusable);
  EXPECT_EQ(run.Run(&none), unusable);
  EXPECT_EQ(run.Run(&one, &one), unusable);  // every pair refused
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_THAT(run.Results(), IsEmpty());
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
}

TEST(BINAlgorithmTest, OneGoodPairRunsAndTheRefusedOnesAreFiledWithTheirCodes) {
  FrameRun run;
  const std::vector<int> attributes = {0, -1, 0, 1, 0, 7};
  const std::vector<int> targets = {1, 1, 0, 1, -5, 1};
  EXPECT_EQ(run.Run(&attributes, &targets), kSomePairNotOK);
  const auto results = run.Results();
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(), MCStatus(120013, false),
                                               MCStatus(120006, false), MCStatus(120005, false),
                                               MCStatus(120013, false), MCStatus(120013, false)));
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(results[i].GetAttributeIndex(), attributes[i]);
    EXPECT_EQ(results[i].GetTargetIndex(), targets[i]);
  }
  EXPECT_THAT(results[0].GetCutPoints(), ElementsAre(3));
  EXPECT_THAT(results[1].GetCutPoints(), IsEmpty());
  EXPECT_THAT(results[1].GetCellCounts(), ElementsAre(IsEmpty()));
  EXPECT_EQ(results[1].GetNDistinctValues(), 0U);
  EXPECT_EQ(results[1].GetTotalWeight(), 0.0);
  EXPECT_EQ(results[1].GetMinimum(), 0.0);
  EXPECT_EQ(results[1].GetModelEntropy(), 0.0);
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120013, false));
}

TEST(BINAlgorithmTest, AttributesAloneThatAreAllOutOfRangeStillRun) {
  FrameRun run;
  const std::vector<int> attributes = {-1, 2};
  EXPECT_EQ(run.Run(&attributes), kSomePairNotOK);
  EXPECT_GT(run.cases.NextCalls(), 0U);
  const auto results = run.Results();
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(120011, false), MCStatus(120011, false)));
  EXPECT_EQ(results[0].GetAttributeIndex(), -1);
  EXPECT_EQ(results[0].GetTargetIndex(), 1);  // the list's target
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120011, false));
}

TEST(BINAlgorithmTest, AttributesAloneUseTheListsTargetAndRefuseItAndTheWeight) {
  SupervisedRun run({{1, 0, 1}, {2, 1, 1}});
  run.AddScale("x");
  run.AddTarget(2);
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  const std::vector<int> attributes = {0, 1, 2};
  EXPECT_EQ(run.Run(&attributes), kSomePairNotOK);
  EXPECT_THAT(statusesOf(run.Results()),
              ElementsAre(MCStatus(), MCStatus(120005, false), MCStatus(120005, false)));
}

TEST(BINAlgorithmTest, WholeListVisitsAllButTargetAndWeight) {
  SupervisedRun run({{1, 0, 1, 7, 0}, {2, 1, 1, 8, 1}});
  run.AddScale("x");
  run.AddTarget(2);
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  run.list.AddContVar("unused", "", IBINVariable::UndefinedRole);
  run.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                     IBINVariable::AttributeRole);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[0].GetAttributeIndex(), 0);
  EXPECT_EQ(results[1].GetAttributeIndex(), 3);
  EXPECT_EQ(results[2].GetAttributeIndex(), 4);
  MCStatus noColumn(120013, false);
  noColumn.SetDiscreteDatum(0, 3);
  EXPECT_THAT(statusesOf(results), ElementsAre(MCStatus(), noColumn, MCStatus()));
}

TEST(BINAlgorithmTest, WholeListWithoutAUsableTargetIsError120010) {
  SupervisedRun run({{1}, {2}});
  run.AddScale("x");
  EXPECT_EQ(run.Run(), MCStatus(120010, false));
  EXPECT_THAT(run.Results(), IsEmpty());

  SupervisedRun tooHigh({{1, 0, 0}, {2, 300, 1}});
  tooHigh.AddScale("x");
  tooHigh.AddTarget(2);
  tooHigh.list.AddCatVar("c", "", 2, IBINVariable::NumericCategoricalLevel,
                         IBINVariable::AttributeRole);
  EXPECT_EQ(tooHigh.Run(), MCStatus(120010, false));
}

TEST(BINAlgorithmTest, SecondRunDoesNotReadTheCasesAgain) {
  FrameRun run;
  EXPECT_TRUE(run.Run().IsOK());
  const std::size_t hasNextCalls = run.cases.HasNextCalls();
  const std::size_t nextCalls = run.cases.NextCalls();
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_EQ(run.cases.HasNextCalls(), hasNextCalls);
  EXPECT_EQ(run.cases.NextCalls(), nextCalls);
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0].GetCutPoints(), results[1].GetCutPoints());
}

TEST(BINAlgorithmTest, BorderIsFixedByThePreparationAndNumberOfBinsReadAtEveryRun) {
  FrameRun run;
  run.settings.SetNumDistinctValueThreshold(2);
  run.settings.SetNumberOfBins(2);
  run.Run();
  run.Algorithm().GetSettings()->SetRightBorderClosed(false);
  run.Algorithm().GetSettings()->SetNumberOfBins(6);
  run.Run();
  const auto results = run.Results();
  ASSERT_EQ(results.size(), 2U);
  EXPECT_THAT(results[0].GetCutPoints(), ElementsAre(3.5));
  EXPECT_THAT(results[1].GetCutPoints(), ElementsAre(3.5));
}

TEST(BINAlgorithmTest, StoredStatusOutlivesALaterGoodRun) {
  FrameRun run;
  const std::vector<int> refused = {9};
  run.Run(&refused);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  EXPECT_EQ(run.Algorithm().GetStatus(), MCStatus(120011, false));
}

TEST(BINAlgorithmTest, NoCaseAtTheFirstRunIsError120004AndTheNextRunPrepares) {
  FrameRun run(SupervisedRun::Rows{});
  EXPECT_EQ(run.Run(), MCStatus(120004, false));
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
  mcbinning_tests::VectorCases cases(kRows);
  EXPECT_TRUE(run.Algorithm().Run(cases, nullptr, nullptr).IsOK());
  EXPECT_THAT(run.OnlyResult().GetCutPoints(), ElementsAre(3));
}

TEST(BINAlgorithmTest, PassWithoutAUsedCaseIsError120004AndTheNextRunPreparesAnew) {
  FrameRun run({{1, 0, 0.5}, {2, 1, -3}});
  run.list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  EXPECT_EQ(run.Run(), MCStatus(120004, false));
  EXPECT_TRUE(run.directory.IsEmpty());
  mcbinning_tests::VectorCases cases({{1, 0, 1}, {2, 1, 1}});
  EXPECT_TRUE(run.Algorithm().Run(cases, nullptr, nullptr).IsOK());
}

TEST(BINAlgorithmTest, TemporaryDirectoryThatDoesNotExistIsError120001) {
  FrameRun run;
  run.settings.SetTempDirName(run.directory.Path() + "/nowhere");
  EXPECT_EQ(run.Run(), MCStatus(120001, false));
  run.Algorithm().GetSettings()->SetTempDirName(run.directory.Path());
  run.cases.Restart();
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, TemporaryFileThatCannotBeMadeIsError120021) {
  FrameRun run;
  run.files.FailAt(FileOperation::Probe, 1);
  EXPECT_EQ(run.Run(), MCStatus(120021, false));
  EXPECT_TRUE(run.Run().IsOK());
}

TEST(BINAlgorithmTest, ColumnLostByTheLastFlushIsError3OfItsPairs) {
  FrameRun run;
  run.files.FailAt(FileOperation::Write, 1);
  EXPECT_EQ(run.Run(), kSomePairNotOK);
  EXPECT_EQ(run.OnlyResult().GetStatus(), kException);
  EXPECT_EQ(run.Algorithm().GetStatus(), kException);
}

TEST(BINAlgorithmTest, CancelBeforeRunEndsItWithoutReadingACase) {
  FrameRun run;
  run.Algorithm().Cancel();
  EXPECT_EQ(run.Run(), kCancelled);
  EXPECT_EQ(run.cases.HasNextCalls(), 0U);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(run.Run(), kCancelled);
  EXPECT_THAT(run.Results(), IsEmpty());
}

TEST(BINAlgorithmTest, CancelAtAnyPollEndsTheRunWithCode1AndAsksNoMore) {
  std::size_t polls = 0;
  {
    FrameRun run;
    CountingQuery never(0);
    run.settings.SetCancelPointer(&never);
    EXPECT_TRUE(run.Run().IsOK());
    polls = never.Calls();
  }
  ASSERT_GT(polls, kRows.size());
  for (std::size_t due = 1; due <= polls; ++due) {
    SCOPED_TRACE(due);
    FrameRun run;
    CountingQuery query(due);
    run.settings.SetCancelPointer(&query);
    EXPECT_EQ(run.Run(), kCancelled);
    EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
    EXPECT_EQ(query.Calls(), due);
    if (due + 1 < polls) {
      EXPECT_THAT(run.Results(), IsEmpty());
    }
  }
}

TEST(BINAlgorithmTest, PairMetAfterACancelIsNeitherFiledNorReported) {
  WideRun run(3);
  /// Cancels from inside the report of the first attribute.
  class Canceller : public RecordingListener {
   public:
    void ReportProgress(ProgressReport& report) override {
      RecordingListener::ReportProgress(report);
      algorithm->Cancel();
    }
    BINAlgorithm* algorithm = nullptr;
  } canceller;
  canceller.algorithm = &run.Algorithm();
  run.Algorithm().SetProgressListener(&canceller);
  const std::vector<int> attributes = {0, 99, 1};
  EXPECT_EQ(run.Run(&attributes), kCancelled);
  EXPECT_THAT(canceller.indexes, ElementsAre(0));
  EXPECT_EQ(run.Results().size(), 1U);
}

TEST(BINAlgorithmTest, GetStatusAsksTheHost) {
  FrameRun run;
  CountingQuery query(1);
  run.Algorithm().SetCancelPointer(&query);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(run.Algorithm().GetStatus(), kCancelled);
  EXPECT_EQ(query.Calls(), 1U);
  run.Algorithm().SetCancelPointer(nullptr);  // the wish stays
  EXPECT_EQ(run.Run(), kCancelled);
}

TEST(BINAlgorithmTest, ReportsEveryAttributeAfterTheSkippedOnes) {
  WideRun run(7);
  run.settings.SetNSkippedAttReports(2);
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_THAT(run.listener.indexes, ElementsAre(2, 5));
}

TEST(BINAlgorithmTest, AttributeThatEndsInErrorIsNotReported) {
  WideRun run(3);
  run.list.SetVariableRole(1, IBINVariable::UndefinedRole);  // no column, hence an error
  run.settings.SetNSkippedAttReports(1);
  run.Run();
  EXPECT_THAT(run.listener.indexes, ElementsAre(2));
}

TEST(BINAlgorithmTest, RefusedPairIsNoAttributeOfTheCountdown) {
  WideRun run(3);
  run.settings.SetNSkippedAttReports(1);
  const std::vector<int> attributes = {0, 99, 1, 2};
  run.Run(&attributes);
  EXPECT_THAT(run.listener.indexes, ElementsAre(1));
}

TEST(BINAlgorithmTest, HostThatThrowsInThePassEndsInStatus3AndTheNextRunPreparesAnew) {
  for (std::size_t call = 1; call <= kRows.size() + 1; ++call) {
    SCOPED_TRACE(call);
    FrameRun run;
    run.cases.ThrowAtHasNext(call);
    EXPECT_EQ(run.Run(), kException);
    EXPECT_TRUE(run.directory.IsEmpty());
    run.cases.Restart();
    EXPECT_TRUE(run.Run().IsOK());
    EXPECT_THAT(run.OnlyResult().GetCutPoints(), ElementsAre(3));
  }
}

TEST(BINAlgorithmTest, ListenerThatThrowsInTheLoopEndsInStatus3AndTheDataStay) {
  WideRun run(2);
  run.listener.throws = true;
  EXPECT_EQ(run.Run(), kException);
  EXPECT_EQ(run.Results().size(), 1U);
  const std::size_t nextCalls = run.cases.NextCalls();
  run.listener.throws = false;
  EXPECT_TRUE(run.Run().IsOK());
  EXPECT_EQ(run.cases.NextCalls(), nextCalls);
  EXPECT_EQ(run.Results().size(), 3U);
}

TEST(BINAlgorithmTest, QueryThatThrowsEndsInStatus3) {
  for (std::size_t due = 1; due <= 2 * kRows.size(); ++due) {
    SCOPED_TRACE(due);
    FrameRun run;
    CountingQuery query(due, true);
    run.settings.SetCancelPointer(&query);
    const MCStatus status = run.Run();
    EXPECT_TRUE(status == kException || (status.IsOK() && query.Calls() < due));
  }
  FrameRun run;
  CountingQuery query(1, true);
  run.Algorithm().SetCancelPointer(&query);
  EXPECT_EQ(run.Algorithm().GetStatus(), kException);
  EXPECT_TRUE(run.Algorithm().GetStatus().IsOK());
}

TEST(BINAlgorithmTest, DisplayBeforeAnyRunShowsNoPreparator) {
  FrameRun run;
  std::ostringstream text;
  run.Algorithm().Display(text);
  EXPECT_EQ(text.str(),
            "\nStart of BINAlgorithm display\n"
            "Record count: 0\n"
            "out result: "
            "\nStart of BINOutput display\n"
            "cut point :"
            "\nEnd of BINOutput display\n"
            "End of BINAlgorithm display\n");
}

TEST(BINAlgorithmTest, DisplayAfterARunShowsPreparatorAndResults) {
  FrameRun run;
  run.Run();
  std::ostringstream text;
  run.Algorithm().Display(text);
  EXPECT_EQ(text.str(),
            "\nStart of BINAlgorithm display\n"
            "Record count: 6\n"
            "out result: BINDataPreparator object: \n"
            "\tPossible inputs used? \tOriginal record size = 2\n"
            "\tProcessed record size = 2\n"
            "\tInput-only record size = 1\n"
            "\tFrequency weight original and new indices: -1   0\n"
            "\tVariable index: 1 0 \n"
            "\tIndices of input variables in the variable list: 0 \n"
            "\tVariable measurement levels: 1 2 \n"
            "\tVariable roles: 1 2 \n"
            "\n"
            "\tStatus is OK.\n"
            "\bINegin display of BINVarList object.\n"
            "Total variables: 2\n"
            "Number of Continuous Variables = 1\n"
            "Number of Categorical Variables  = 1\n"
            "Target Index  = 1\n"
            "Variable 0\n"
            "Continuous variable: name = x, label = , role = Attribute\n"
            "Variable 1\n"
            "Categorical variable: name = target, label = , role = Target\n"
            "\tMeasurement Level = Numeric Categorical\n"
            "\tNumber of Categories = 2\n"
            "\tBINCatNumEncoder: Last code = -1\n"
            "\t\tNumeric values of categories: \n"
            "\n"
            "End of display for BINVarList object.\n"
            "\n"
            "Start of BINOutput display\n"
            "cut point :\n"
            "Start of BINAttributeTargetResults display\n"
            "BINDataTuple   attribute = 0\n"
            "target = 1\n"
            "Number of distinct values = 6\n"
            "Total weight = 6\n"
            "Total weight with missing = 6\n"
            "Minimum = 1\n"
            "Maximum = 6\n"
            "Model Entropy = 0\n"
            "Number of cutpoints = 1, the cutpoints:\n"
            "3\n"
            "The CellCounts are\n"
            "3  3  0  \n"
            "3  0  3  \n"
            "\n"
            "End of BINAttributeTargetResults display\n"
            "\n"
            "End of BINOutput display\n"
            "End of BINAlgorithm display\n");
}

}  // namespace
