#include "platform/file_claim.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/real_files.h"
#include "system/child_process.h"
#include "system/limited_process.h"

namespace {

namespace fs = std::filesystem;

using MCBinning::CreateResult;
using MCBinning::FileClaim;
using mcbinning_tests::AnswerOf;
using mcbinning_tests::files;
using mcbinning_tests::makeOurs;
using mcbinning_tests::StartChild;

// Called once, before the next lock is taken or directory removed.
std::function<void()> beforeLock;
std::function<void()> beforeRemoval;

void callOnce(std::function<void()>& hook) {
  if (hook) {
    std::exchange(hook, nullptr)();
  }
}

}  // namespace

// These take the place of the C library's.
int flock(int file, int operation) noexcept {
  callOnce(beforeLock);
  return static_cast<int>(syscall(SYS_flock, file, operation));
}

int unlinkat(int directory, const char* name, int flags) noexcept {
  if (flags == AT_REMOVEDIR) {
    callOnce(beforeRemoval);
  }
  return static_cast<int>(syscall(SYS_unlinkat, directory, name, flags));
}

namespace {

class PosixFileClaimTest : public mcbinning_tests::RealFilesTest {
 protected:
  /// A process that ends, or is killed, with a claim of the files.
  std::string Abandon(const std::vector<std::string>& names) const {
    EXPECT_EQ(AnswerOf(StartChild([&] {
                FileClaim claim;
                bool done = files().MakeClaim(Prefix(), claim);
                for (const std::string& name : names) {
                  done = done && makeOurs(claim, Name(name)) == CreateResult::Created;
                }
                return done ? 0 : 1;
              })),
              0);
    for (const std::string& entry : directory_.Entries()) {
      if (fs::is_directory(Name(entry))) {
        return entry;
      }
    }
    return "";
  }
};

TEST_F(PosixFileClaimTest, AClaimIsItsOwnersOnly) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  EXPECT_EQ(fs::status(claim.name).permissions(), fs::perms::owner_all);
  files().DropClaim(claim, true);
}

TEST_F(PosixFileClaimTest, FilesAreMadeWithoutAClaimWhereNothingCanBeMadeInOne) {
  FileClaim claim;
  {
    const mcbinning_tests::WithoutFileHandles limited;
    EXPECT_FALSE(files().MakeClaim(Prefix(), claim));
    files().RemoveAbandoned(Prefix());
  }
  EXPECT_TRUE(directory_.IsEmpty());
  // A claim in which nothing can be made any more is as good as none.
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  fs::remove(claim.name);
  EXPECT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  files().DropClaim(claim, true);
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(PosixFileClaimTest, WhatAProcessThatEndedHadClaimedIsRemoved) {
  const std::string abandoned = Abandon({"1a", "1b", "1c"});
  EXPECT_EQ(NumberOfEntries(), 4U);
  // Others' files of such names, in and beside the claim, one of them in place of a claimed one.
  fs::remove(Name("1b"));
  MakeTheirs("1b");
  MakeTheirs("1d");
  MakeTheirs(abandoned + "/not-ours");
  files().RemoveAbandoned(Prefix());
  EXPECT_FALSE(fs::exists(Name("1a")));
  EXPECT_FALSE(fs::exists(Name("1c")));
  EXPECT_EQ(fs::file_size(Name("1b")) + fs::file_size(Name("1d")), 12U);
  EXPECT_EQ(NumberOfEntries(), 3U);
  fs::remove(Name(abandoned + "/not-ours"));
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 2U);
}

TEST_F(PosixFileClaimTest, WhatAProcessOrItsForkedCopyStillHoldsIsLeft) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
  std::array<int, 2> end{};
  ASSERT_EQ(pipe(end.data()), 0);
  const pid_t copy = StartChild([&] {
    char byte = 0;
    close(end[1]);
    return read(end[0], &byte, 1) == 0 ? 0 : 1;
  });
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(fs::file_size(Name("1a")), 4U);
  files().DropClaim(claim, false);
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(fs::file_size(Name("1a")), 4U);
  close(end[0]);
  close(end[1]);
  EXPECT_EQ(AnswerOf(copy), 0);
  files().RemoveAbandoned(Prefix());
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(PosixFileClaimTest, OnlyOwnDirectoriesOfThatNameAreLookedInto) {
  const std::string abandoned = Abandon({"1a"});
  fs::rename(Name(abandoned), Name("elsewhere"));
  fs::create_directory_symlink(Name("elsewhere"), Name("mcbinning-columns-aaaaaa"));
  ASSERT_EQ(mkfifo(Name("mcbinning-columns-bbbbbb").c_str(), 0600), 0);
  fs::create_directory(Name("mcbinning-columns-longer-than-that"));
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 5U);
  fs::remove(Name("mcbinning-columns-aaaaaa"));
  fs::rename(Name("elsewhere"), Name("mcbinning-columns-aaaaaa"));
  for (const std::string& open : {directory_.Path(), Name("mcbinning-columns-aaaaaa")}) {
    ASSERT_EQ(chmod(open.c_str(), 0777), 0);
  }
  if (geteuid() == 0) {
    const mcbinning_tests::WithoutPrivileges another;
    files().RemoveAbandoned(Prefix());
  }
  EXPECT_EQ(NumberOfEntries(), 4U);
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 2U);
}

// Between its making and its lock a claim looks abandoned.

TEST_F(PosixFileClaimTest, AClaimRemovedBeforeItIsLockedIsMadeAnew) {
  beforeLock = [this] { files().RemoveAbandoned(Prefix()); };
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
  EXPECT_TRUE(fs::exists(claim.name + "/1a"));
  EXPECT_EQ(NumberOfEntries(), 2U);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  files().DropClaim(claim, true);
}

TEST_F(PosixFileClaimTest, AClaimMadeAnewLeavesNothingOpen) {
  const int input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  beforeLock = [this] { files().RemoveAbandoned(Prefix()); };
  FileClaim claim;
  EXPECT_TRUE(files().MakeClaim(Prefix(), claim));
  EXPECT_EQ(claim.handle, STDIN_FILENO);
  files().DropClaim(claim, true);
  dup2(input, STDIN_FILENO);
  close(input);
}

TEST_F(PosixFileClaimTest, AClaimThatSomebodyLockedToRemoveItIsMadeAnew) {
  int other = -1;
  beforeLock = [&] {
    other = open(Name(directory_.Entries().front()).c_str(), O_RDONLY);
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  };
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  EXPECT_EQ(NumberOfEntries(), 2U);
  close(other);
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 1U);
  files().DropClaim(claim, true);
}

TEST_F(PosixFileClaimTest, AnAbandonedClaimIsLockedUntilItIsGone) {
  const std::string abandoned = Abandon({});
  beforeRemoval = [&] {
    const int owner = open(Name(abandoned).c_str(), O_RDONLY);
    EXPECT_NE(flock(owner, LOCK_EX | LOCK_NB), 0);
    close(owner);
  };
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(beforeRemoval, nullptr);
  EXPECT_TRUE(directory_.IsEmpty());
}

}  // namespace
