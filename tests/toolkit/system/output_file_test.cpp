#include "toolkit/system/output_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::readFile;
using testing::TemporaryFiles;

std::size_t filesIn(const std::string& directory) {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory)) ++count;
  return count;
}

TEST(OutputFile, AppearsWhenCommitted) {
  const TemporaryFiles files;
  const std::string path = files.Path("out");
  OutputFile file(path);
  file.Write("new");
  EXPECT_FALSE(std::filesystem::exists(path));
  file.Commit();
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(filesIn(files.Directory()), 1U);
}

TEST(OutputFile, WithoutCommitTheOlderFileStays) {
  const TemporaryFiles files;
  const std::string path = files.Write("out", "old");
  { OutputFile(path).Write("new"); }
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(filesIn(files.Directory()), 1U);
}

TEST(OutputFile, WritesSpecialFilesDirectly) {
  OutputFile file("/dev/null");
  file.Write("x");
  file.Commit();
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(OutputFile, FailuresNameThePath) {
  EXPECT_EQ(messageOf<DataError>([] { OutputFile("/nonexistent/out"); }),
            "cannot write /nonexistent/out: No such file or directory");
  EXPECT_EQ(messageOf<DataError>([] {
              OutputFile file("/dev/full");
              file.Write("x");
              file.Commit();
            }),
            "cannot write /dev/full: No space left on device");
}

}  // namespace
}  // namespace mcbin
