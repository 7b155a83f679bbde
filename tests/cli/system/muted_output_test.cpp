#include "cli/system/muted_output.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>

namespace mcbin {
namespace {

TEST(MutedOutput, OnlyWhatIsWrittenMeanwhileIsLost) {
  ::testing::internal::CaptureStdout();
  std::fputs("before ", stdout);
  {
    const MutedStandardOutput muted;
    std::cout << "Error: file handle is NULL";
    std::puts("more");
  }
  std::fputs("after", stdout);
  std::fflush(stdout);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "before after");
}

}  // namespace
}  // namespace mcbin
