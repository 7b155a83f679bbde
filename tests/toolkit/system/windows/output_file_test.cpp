#include "toolkit/system/output_file.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::readFile;
using testing::TemporaryFiles;

Monitor monitor;  // watches nothing

class OutputFileTest : public ::testing::Test {
 protected:
  void WriteNew() const {
    OutputFile file(path_, monitor);
    file.Write("new\n");
    file.Commit();
  }

  TemporaryFiles files_;
  const std::string path_ = files_.Write("out", "old");
};

TEST_F(OutputFileTest, ReplacesWhenCommittedAndKeepsLineEnds) {
  { OutputFile(path_, monitor).Write("lost"); }
  EXPECT_EQ(readFile(path_), "old");
  WriteNew();
  EXPECT_EQ(readFile(path_), "new\n");
}

TEST_F(OutputFileTest, AReadOnlyFileIsReplacedByAReadOnlyOne) {
  ASSERT_NE(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_READONLY), 0);
  WriteNew();
  EXPECT_EQ(readFile(path_), "new\n");
  EXPECT_NE(GetFileAttributesA(path_.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
  SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(OutputFileTest, AFileThatIsOpenElsewhereIsNotReplaced) {
  const HANDLE reader =
      CreateFileA(path_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_EQ(messageOf<DataError>([&] { WriteNew(); }),
            "cannot write " + path_ + ": Permission denied");
  CloseHandle(reader);
  EXPECT_EQ(readFile(path_), "old");
}

TEST_F(OutputFileTest, WritesDevicesDirectly) {
  OutputFile file("NUL", monitor);
  file.Write("x");
  file.Commit();
}

TEST_F(OutputFileTest, FailuresNameThePath) {
  EXPECT_EQ(messageOf<DataError>([] { OutputFile("nonexistent/out", monitor); }),
            "cannot write nonexistent/out: No such file or directory");
}

}  // namespace
}  // namespace mcbin
