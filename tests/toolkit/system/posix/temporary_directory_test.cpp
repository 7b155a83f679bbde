#include "toolkit/system/temporary_directory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::TemporaryFiles;
namespace fs = std::filesystem;

/// Runs `action` in a forked child; returns how the child ended.
template <class Action>
int inChild(Action action) {
  const pid_t child = ::fork();
  if (child == 0) {
    action();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

class TemporaryDirectoryTest : public ::testing::Test {
 protected:
  /// Leaves the directory of a process that was killed, with a file in it.
  void LeaveOne() const {
    const int status = inChild([&] {
      const TemporaryDirectory directory(Root());
      std::ofstream(directory.Path() + "/column") << "x";
      ::raise(SIGKILL);
    });
    ASSERT_TRUE(WIFSIGNALED(status));
  }

  /// Directories in the root.
  std::size_t Count() const {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(Root())) count += entry.is_directory() ? 1 : 0;
    return count;
  }

  const std::string& Root() const { return files_.Directory(); }

 private:
  TemporaryFiles files_;
};

TEST_F(TemporaryDirectoryTest, ARootThatIsNotThereIsNamed) {
  EXPECT_EQ(messageOf<DataError>([] { TemporaryDirectory("/nonexistent"); }),
            "cannot make a temporary directory in /nonexistent: No such file or directory");
}

TEST_F(TemporaryDirectoryTest, GoesWithItsFiles) {
  std::string path;
  {
    const TemporaryDirectory directory(Root());
    path = directory.Path();
    std::ofstream(path + "/a") << "x";
    EXPECT_TRUE(fs::exists(path + "/a"));
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(TemporaryDirectoryTest, GoesWithoutADescriptorToSpare) {
  const TemporaryFiles other;
  std::string path;
  rlimit before = {};
  {
    const TemporaryDirectory directory(Root());
    path = directory.Path();
    std::ofstream(path + "/a") << "x";
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
  }
  ::setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(TemporaryDirectoryTest, AForkedChildRemovesNothing) {
  alignas(TemporaryDirectory) char place[sizeof(TemporaryDirectory)];
  auto* const directory = new (place) TemporaryDirectory(Root());
  const std::string path = directory->Path();
  EXPECT_EQ(inChild([&] { directory->~TemporaryDirectory(); }), 0);
  EXPECT_TRUE(fs::exists(path));
  directory->~TemporaryDirectory();
  EXPECT_FALSE(fs::exists(path));
}

TEST_F(TemporaryDirectoryTest, DirectoriesOfDeadProcessesAreRemovedByTheNext) {
  LeaveOne();
  LeaveOne();  // removes the first
  EXPECT_EQ(Count(), 1U);
  { const TemporaryDirectory next(Root()); }
  EXPECT_EQ(Count(), 0U);
}

TEST_F(TemporaryDirectoryTest, ADirectoryWhoseProcessDiedBeforeItHadALockIsRemovedWhenEmpty) {
  std::string left = Root() + "/mcbin-XXXXXX";
  ASSERT_NE(::mkdtemp(left.data()), nullptr);
  { const TemporaryDirectory next(Root()); }
  EXPECT_FALSE(fs::exists(left));
  fs::create_directory(Root() + "/mcbin-result");  // as any program makes one
  fs::create_directory(Root() + "/mcbin-secret");
  fs::permissions(Root() + "/mcbin-secret", fs::perms::owner_all);
  std::ofstream(Root() + "/mcbin-secret/precious") << "x";
  { const TemporaryDirectory next(Root()); }
  EXPECT_TRUE(fs::exists(Root() + "/mcbin-result"));
  EXPECT_TRUE(fs::exists(Root() + "/mcbin-secret/precious"));
  fs::remove(Root() + "/mcbin-result");
  fs::remove_all(Root() + "/mcbin-secret");
}

TEST_F(TemporaryDirectoryTest, DirectoriesInUseStay) {
  const TemporaryDirectory first(Root());
  EXPECT_EQ(inChild([&] { const TemporaryDirectory other(Root()); }), 0);
  const TemporaryDirectory second(Root());
  EXPECT_TRUE(fs::exists(first.Path()));
  EXPECT_EQ(Count(), 2U);
}

TEST_F(TemporaryDirectoryTest, WhatOnlyLooksAlikeStays) {
  fs::create_directory(Root() + "/mcbin-result");  // no lock in it
  std::ofstream(Root() + "/mcbin-result/precious") << "x";
  fs::create_directory(Root() + "/elsewhere");
  fs::create_directory_symlink(Root() + "/elsewhere", Root() + "/mcbin-linked");
  std::ofstream(Root() + "/elsewhere/.mcbin-lock") << "";
  { const TemporaryDirectory next(Root()); }
  EXPECT_TRUE(fs::exists(Root() + "/mcbin-result/precious"));
  EXPECT_TRUE(fs::exists(Root() + "/elsewhere/.mcbin-lock"));
  fs::remove(Root() + "/mcbin-linked");
  fs::remove_all(Root() + "/elsewhere");
  fs::remove_all(Root() + "/mcbin-result");
}

TEST_F(TemporaryDirectoryTest, DirectoriesOfOtherUsersStay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can give a directory away";
  LeaveOne();
  const std::string left = fs::directory_iterator(Root())->path().filename() == ".mcbin-lock"
                               ? std::next(fs::directory_iterator(Root()))->path().string()
                               : fs::directory_iterator(Root())->path().string();
  ASSERT_EQ(::chown(left.c_str(), 12345, 12345), 0);
  { const TemporaryDirectory next(Root()); }
  EXPECT_TRUE(fs::exists(left + "/column"));
  fs::remove_all(left);
}

}  // namespace
}  // namespace mcbin
