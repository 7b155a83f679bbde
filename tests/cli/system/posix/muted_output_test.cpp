#include "cli/system/muted_output.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

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
