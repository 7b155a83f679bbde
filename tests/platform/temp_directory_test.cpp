#include "platform/temp_directory.h"

#include <gtest/gtest.h>

namespace {

using MCBinning::DirectoryOf;

TEST(DirectoryOfTest, IsWhatStandsBeforeTheLastSeparator) {
  EXPECT_EQ(DirectoryOf("C:\\temp\\s3k.1", '\\'), "C:\\temp");
  EXPECT_EQ(DirectoryOf("/tmp/file", '/'), "/tmp");
  EXPECT_EQ(DirectoryOf("//file", '/'), "/");
}

TEST(DirectoryOfTest, WithoutASeparatorItIsTheCurrentDirectoryWithOne) {
  EXPECT_EQ(DirectoryOf("s3k.1", '\\'), ".\\");
  EXPECT_EQ(DirectoryOf("/tmp/s3k.1", '\\'), ".\\");
  EXPECT_EQ(DirectoryOf("", '\\'), ".\\");
  EXPECT_EQ(DirectoryOf("", '/'), "./");
}

TEST(DirectoryOfTest, ASeparatorInFrontCountsAsNone) {
  EXPECT_EQ(DirectoryOf("\\s3k.1", '\\'), ".\\");
  EXPECT_EQ(DirectoryOf("/file", '/'), "./");
}

}  // namespace
