#include "platform/temp_directory.h"

#include <gtest/gtest.h>

namespace {

using MCBinning::directoryOf;

TEST(DirectoryOfTest, IsWhatStandsBeforeTheLastSeparator) {
  EXPECT_EQ(directoryOf("C:\\temp\\s3k.1", '\\'), "C:\\temp");
  EXPECT_EQ(directoryOf("/tmp/file", '/'), "/tmp");
  EXPECT_EQ(directoryOf("//file", '/'), "/");
}

TEST(DirectoryOfTest, WithoutASeparatorItIsTheCurrentDirectoryWithOne) {
  EXPECT_EQ(directoryOf("s3k.1", '\\'), ".\\");
  EXPECT_EQ(directoryOf("/tmp/s3k.1", '\\'), ".\\");
  EXPECT_EQ(directoryOf("", '\\'), ".\\");
  EXPECT_EQ(directoryOf("", '/'), "./");
}

TEST(DirectoryOfTest, ASeparatorInFrontCountsAsNone) {
  EXPECT_EQ(directoryOf("\\s3k.1", '\\'), ".\\");
  EXPECT_EQ(directoryOf("/file", '/'), "./");
}

}  // namespace
