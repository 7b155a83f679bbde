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
  const TemporaryFiles files;
  EXPECT_EQ(messageOf<DataError>([&] { openForReading("nonexistent", monitor); }),
            "cannot open nonexistent: No such file or directory");
  EXPECT_EQ(messageOf<DataError>([&] { openForReading(files.Directory(), monitor); }),
            "cannot open " + files.Directory() + ": it is a directory");
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
  const OpenedFile file = openForReading("NUL", monitor);
  EXPECT_TRUE(file.isCopy);
  EXPECT_EQ(fileSize(file.descriptor), 0U);
  closeDescriptor(file.descriptor);
}

TEST(Files, AFileThatIsBeingWrittenIsRead) {
  Monitor monitor;
  const TemporaryFiles files;
  std::ofstream writing(files.Path("a"));
  writing << "so far" << std::flush;
  const OpenedFile file = openForReading(files.Path("a"), monitor);
  EXPECT_FALSE(file.isCopy);
  EXPECT_EQ(fileSize(file.descriptor), 6U);
  closeDescriptor(file.descriptor);
}

}  // namespace
}  // namespace mcbin
