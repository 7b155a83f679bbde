#include "toolkit/system/files.h"

#include <gtest/gtest.h>

#include <filesystem>

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
  EXPECT_EQ(messageOf<DataError>([] { TemporaryDirectory("/nonexistent"); }),
            "cannot make a temporary directory in /nonexistent: No such file or directory");
}

TEST(Files, ATemporaryDirectoryGoesWithItsFiles) {
  std::string path;
  {
    const TemporaryFiles files;
    path = files.Directory();
    files.Write("a", "x");
    EXPECT_TRUE(std::filesystem::exists(path + "/a"));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(Files, WhatIsNoRegularFileIsCopied) {
  Monitor monitor;
  const int descriptor = openForReading("/dev/null", monitor);
  EXPECT_EQ(fileSize(descriptor), 0U);
  closeDescriptor(descriptor);
}

}  // namespace
}  // namespace mcbin
