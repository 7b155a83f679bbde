#include "toolkit/system/waiting.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>

namespace mcbin {
namespace {

/// Wants to stop from the given question on.
class Stopping : public Monitor {
 public:
  explicit Stopping(int question) : question_(question) {}
  void ThrowIfStopped() override {
    if (++asked_ >= question_) throw std::runtime_error("stopped");
  }

 private:
  int question_;
  int asked_ = 0;
};

TEST(Waiting, ASilentPipeIsLeftWhenTheMonitorSaysSo) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  // No signal ends the wait: it asks by itself.
  Stopping third(3);
  EXPECT_THROW(waitToRead(ends[0], third), std::runtime_error);
  ASSERT_EQ(::write(ends[1], "x", 1), 1);
  Stopping second(2);
  EXPECT_NO_THROW(waitToRead(ends[0], second));
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(Waiting, AFullPipeIsLeftWhenTheMonitorSaysSo) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  Stopping second(2);
  EXPECT_NO_THROW(waitToWrite(ends[1], second));
  const char page[4096] = {};
  for (int i = 0; i < 16; ++i) ASSERT_EQ(::write(ends[1], page, sizeof page), 4096);
  Stopping third(3);
  EXPECT_THROW(waitToWrite(ends[1], third), std::runtime_error);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(Waiting, AClosedDescriptorIsNotWaitedFor) {
  Monitor monitor;
  waitToRead(1000, monitor);
  waitToWrite(1000, monitor);
}

}  // namespace
}  // namespace mcbin
