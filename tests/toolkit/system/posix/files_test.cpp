#include "toolkit/system/files.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;

TEST(Files, RefusalsNameThePath) {
  Monitor monitor;
  EXPECT_EQ(messageOf<DataError>([&] { openForReading("/nonexistent", monitor); }),
            "cannot open /nonexistent: No such file or directory");
  EXPECT_EQ(messageOf<DataError>([&] { openForReading("/", monitor); }),
            "cannot open /: it is a directory");
}

TEST(Files, WhatIsNoRegularFileIsCopied) {
  Monitor monitor;
  const int descriptor = openForReading("/dev/null", monitor).descriptor;
  EXPECT_EQ(fileSize(descriptor), 0U);
  closeDescriptor(descriptor);
}

}  // namespace
}  // namespace mcbin
