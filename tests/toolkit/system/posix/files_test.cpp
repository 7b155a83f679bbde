#include "toolkit/system/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::TemporaryFiles;

TEST(Files, RefusalsNameThePath) {
  Monitor monitor;
  EXPECT_EQ(messageOf<DataError>([&] { openForReading("/nonexistent", monitor); }),
            "cannot open /nonexistent: No such file or directory");
  EXPECT_EQ(messageOf<DataError>([&] { openForReading("/", monitor); }),
            "cannot open /: it is a directory");
}

TEST(Files, ADirectoryTellsItsNames) {
  const TemporaryFiles files;
  files.Write("a", "");
  files.Write("b", "");
  std::error_code failure;
  EXPECT_THAT(namesIn(files.Directory(), failure), ::testing::IsSupersetOf({"a", "b"}));
  EXPECT_FALSE(failure);
  EXPECT_THAT(namesIn(files.Path("a") + "/none", failure), ::testing::IsEmpty());
  EXPECT_TRUE(failure);
}

TEST(Files, WhatIsNoRegularFileIsCopied) {
  Monitor monitor;
  const int descriptor = openForReading("/dev/null", monitor).descriptor;
  EXPECT_EQ(fileSize(descriptor), 0U);
  closeDescriptor(descriptor);
}

}  // namespace
}  // namespace mcbin
