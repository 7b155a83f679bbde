#include "toolkit/system/temporary_directory.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

#include "system/child_process.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using mcbinning_tests::ChildProcess;
using testing::messageOf;
using testing::TemporaryFiles;
namespace fs = std::filesystem;

TEST(TemporaryDirectoryTest, ARootThatIsNotThereIsNamed) {
  EXPECT_EQ(messageOf<DataError>([] { TemporaryDirectory("nonexistent"); }),
            "cannot make a temporary directory in nonexistent: No such file or directory");
}

TEST(TemporaryDirectoryTest, GoesWithItsFilesAndFolders) {
  const TemporaryFiles files;
  std::string path;
  {
    const TemporaryDirectory directory(files.Directory());
    path = directory.Path();
    std::ofstream(path + "/a") << "x";
    fs::create_directory(path + "/folder");
    std::ofstream(path + "/folder/b") << "x";
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST(TemporaryDirectoryChild, IsKilled) {
  const std::string root = mcbinning_tests::TaskOfChild();
  if (root.empty()) return;
  const TemporaryDirectory directory(root);
  std::ofstream(directory.Path() + "/column") << "x";
  TerminateProcess(GetCurrentProcess(), ChildProcess::kKilled);
}

TEST(TemporaryDirectoryTest, TheNextOneRemovesWhatAKilledProcessLeftAndNothingElse) {
  const TemporaryFiles files;
  const TemporaryDirectory living(files.Directory());
  fs::create_directory(files.Path("mcbin-theirs00"));
  const ChildProcess child("TemporaryDirectoryChild.IsKilled", files.Directory());
  EXPECT_EQ(child.Answer(), ChildProcess::kKilled);
  const auto count = [&] {
    return std::distance(fs::directory_iterator(files.Directory()), fs::directory_iterator());
  };
  EXPECT_EQ(count(), 4);  // the lock of the directory itself among them
  const TemporaryDirectory next(files.Directory());
  EXPECT_EQ(count(), 4);
  EXPECT_TRUE(fs::exists(living.Path()));
  EXPECT_TRUE(fs::exists(files.Path("mcbin-theirs00")));
}

}  // namespace
}  // namespace mcbin
