#include "cli/system/muted_output.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdio>
#include <iostream>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

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

TEST(MutedOutput, WithoutADescriptorItSaysSo) {
  rlimit before = {};
  ::getrlimit(RLIMIT_NOFILE, &before);
  const rlimit none = {3, before.rlim_max};
  ::setrlimit(RLIMIT_NOFILE, &none);
  const std::string message = testing::messageOf<DataError>([] { MutedStandardOutput(); });
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(message, "cannot open /dev/null: Too many open files");
}

}  // namespace
}  // namespace mcbin
