#include "status/cancel_state.h"

#include <gtest/gtest.h>

namespace {

class CountingQuery : public MCQueryCancel {
 public:
  explicit CountingQuery(int falseAnswers) : falseAnswers_(falseAnswers) {}
  bool IsCancelled() override { return ++asked_ > falseAnswers_; }
  int Asked() const { return asked_; }

 private:
  int falseAnswers_;
  int asked_ = 0;
};

TEST(CancelStateTest, NullQueryNeverCancels) {
  MCBinning::CancelState state(nullptr);
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_FALSE(state.IsCancelled());
}

TEST(CancelStateTest, FirstTrueAnswerIsKeptAndTheHostNotAskedAgain) {
  CountingQuery query(2);
  MCBinning::CancelState state(&query);
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_FALSE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_EQ(query.Asked(), 3);
}

TEST(CancelStateTest, CancelNeedsNoQuestion) {
  CountingQuery query(100);
  MCBinning::CancelState state(&query);
  state.Cancel();
  EXPECT_TRUE(state.IsCancelled());
  EXPECT_EQ(query.Asked(), 0);
}

TEST(CancelStateTest, ReplacingTheQueryKeepsTheAnswer) {
  CountingQuery yes(0);
  CountingQuery no(100);
  MCBinning::CancelState state(&no);
  EXPECT_FALSE(state.IsCancelled());
  state.SetQuery(&yes);
  EXPECT_TRUE(state.IsCancelled());
  state.SetQuery(nullptr);
  EXPECT_TRUE(state.IsCancelled());
}

}  // namespace
