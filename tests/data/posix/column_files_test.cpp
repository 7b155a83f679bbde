// What POSIX permissions, mounts and forks have to do with column files.
#include "data/column_files.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/scratch_directory.h"
#include "system/child_process.h"
#include "system/limited_process.h"

namespace mcbinning_tests {
namespace {

using MCBinning::ColumnBuffer;
using MCBinning::ColumnFiles;

MCBinning::MCStatus error(long code) { return {code, false}; }

class PosixColumnFilesTest : public testing::Test {
 protected:
  PosixColumnFilesTest() {
    EXPECT_TRUE(buffer_.Allocate(2, 10000));
    buffer_.Append(0, 1.0);
  }

  ScratchDirectory directory_;
  MCBinning::CancelState cancel_{nullptr};
  ColumnFiles columns_{directory_.Path(), cancel_, MCBinning::realFileSystem()};
  ColumnBuffer buffer_;
};

TEST_F(PosixColumnFilesTest, FilesAreForTheirOwnersEyesOnly) {
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  struct stat state {};
  ASSERT_EQ(stat(columns_.Names()[0].c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 0177U, 0U);
}

TEST_F(PosixColumnFilesTest, ADirectoryThatMayNotBeUsedGives120021) {
  for (const mode_t mode : {0555U, 0666U, 0U}) {
    ASSERT_EQ(chmod(directory_.Path().c_str(), mode), 0);
    const WithoutPrivileges limited;
    EXPECT_EQ(columns_.SetUp(1), error(120021)) << mode;
  }
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0700), 0);
}

TEST_F(PosixColumnFilesTest, AFileSystemWithTooLittleRoomGives120021) {
  if (mount("mcbinning-test", directory_.Path().c_str(), "tmpfs", 0, "size=64k") != 0) {
    GTEST_SKIP() << "no file system may be mounted here";
  }
  EXPECT_TRUE(columns_.SetUp(2).IsOK());
  while (!buffer_.IsFull()) {
    buffer_.Append(0, 1.0);
  }
  EXPECT_EQ(columns_.Flush(buffer_), error(120021));
  columns_.Remove();
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(umount(directory_.Path().c_str()), 0);
}

TEST_F(PosixColumnFilesTest, AForkedCopyNeitherWritesNorRemovesTheFiles) {
  ASSERT_TRUE(columns_.SetUp(2).IsOK());
  ASSERT_TRUE(columns_.Flush(buffer_).IsOK());
  const pid_t child = StartChild([&] {
    buffer_.Append(0, 9.0);
    const bool isRefused = columns_.Flush(buffer_) == error(120021);
    columns_.Remove();
    const bool hasItsOwn = columns_.SetUp(2).IsOK() && columns_.Flush(buffer_).IsOK();
    columns_.Remove();
    return isRefused && hasItsOwn ? 0 : 1;
  });
  EXPECT_EQ(AnswerOf(child), 0);
  EXPECT_EQ(std::filesystem::file_size(columns_.Names()[0]), sizeof(double));
  EXPECT_EQ(directory_.Files().size(), 2U);
}

}  // namespace
}  // namespace mcbinning_tests
