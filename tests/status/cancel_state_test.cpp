#include "status/cancel_state.h"

#include <gtest/gtest.h>

#include "support/host_objects.h"

namespace {

using mcbinning_tests::CountingQuery;

TEST(CancelStateTest, NullQueryNeverCancels) {
  MCBinning::CancelState state(nullptr);
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_FALSE(state.IsCancelled());
}

TEST(CancelStateTest, FirstTrueAnswerIsKeptAndTheHostNotAskedAgain) {
  CountingQuery query(3);
  MCBinning::CancelState state(&query);
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_EQ(query.Asked(), 3U);
}

TEST(CancelStateTest, CancelNeedsNoQuestion) {
  CountingQuery query;
  MCBinning::CancelState state(&query);
  state.Cancel();
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_EQ(query.Asked(), 0U);
}

TEST(CancelStateTest, ReplacingTheQueryKeepsTheAnswer) {
  CountingQuery yes(1);
  CountingQuery no;
  MCBinning::CancelState state(&no);
  EXPECT_FALSE(state.IsCancelled());
  state.SetQuery(&yes);
  EXPECT_TRUE(state.IsCancelled());
  state.SetQuery(nullptr);
  EXPECT_TRUE(state.IsCancelled());
}

TEST(CancelStateTest, CancelWhileTheHostIsAskedStaysWhateverTheAnswer) {
  CountingQuery query;
  MCBinning::CancelState state(&query);
  query.hook = [&] { state.Cancel(); };
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_TRUE(state.WasCancelled());
}

}  // namespace
