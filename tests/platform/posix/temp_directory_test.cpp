#include "platform/temp_directory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "support/scratch_directory.h"
#include "system/limited_process.h"

namespace {

using MCBinning::tempDirectory;

/// Sets TMPDIR to a value, or unsets it, and puts the old value back at the end.
class TemporaryDirectoryVariable {
 public:
  TemporaryDirectoryVariable() {
    if (const char* value = std::getenv("TMPDIR")) {
      old_ = value;
    }
  }
  ~TemporaryDirectoryVariable() {
    if (old_) {
      Set(*old_);
    } else {
      Unset();
    }
  }
  TemporaryDirectoryVariable(const TemporaryDirectoryVariable&) = delete;
  TemporaryDirectoryVariable& operator=(const TemporaryDirectoryVariable&) = delete;

  static void Set(const std::string& value) { setenv("TMPDIR", value.c_str(), 1); }
  static void Unset() { unsetenv("TMPDIR"); }

 private:
  std::optional<std::string> old_;
};

TEST(TempDirectoryTest, FollowsTheVariableWhenItNamesADirectory) {
  const TemporaryDirectoryVariable variable;
  const std::filesystem::path directory =
      std::filesystem::path(testing::TempDir()) / "mcbinning temp directory test";
  std::filesystem::create_directory(directory);
  variable.Set(directory.string());
  EXPECT_EQ(tempDirectory(), directory.string());
  variable.Set(directory.string() + "//");
  EXPECT_EQ(tempDirectory(), directory.string());
  EXPECT_TRUE(std::filesystem::is_empty(directory));
  variable.Set("/");
  EXPECT_EQ(tempDirectory(), "/");
  variable.Set(".");
  EXPECT_EQ(tempDirectory(), ".");
  std::filesystem::remove_all(directory);
}

TEST(TempDirectoryTest, ElseItIsTheRuntimesOwn) {
  const TemporaryDirectoryVariable variable;
  variable.Unset();
  EXPECT_EQ(tempDirectory(), P_tmpdir);
  variable.Set("");
  EXPECT_EQ(tempDirectory(), P_tmpdir);
  variable.Set("/no such directory");
  EXPECT_EQ(tempDirectory(), P_tmpdir);
}

TEST(TempDirectoryTest, AFileIsNoDirectory) {
  const TemporaryDirectoryVariable variable;
  const mcbinning_tests::ScratchDirectory scratch;
  const std::string file = scratch.Path() + "/file";
  std::ofstream(file) << "not a directory";
  ASSERT_TRUE(std::filesystem::is_regular_file(file));
  variable.Set(file);
  EXPECT_EQ(tempDirectory(), P_tmpdir);
  scratch.Clear();
}

TEST(TempDirectoryTest, WithoutAnyDirectoryItIsTheWorkingOne) {
  const TemporaryDirectoryVariable variable;
  variable.Unset();
  const mcbinning_tests::ScratchDirectory empty;
  const mcbinning_tests::RootDirectory root(empty.Path());
  if (!root.IsSet()) {
    GTEST_SKIP() << "the root directory is for a privileged user to set";
  }
  EXPECT_EQ(tempDirectory(), "./");
}

}  // namespace
