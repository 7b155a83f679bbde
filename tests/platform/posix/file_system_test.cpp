#include "platform/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "support/real_files.h"
#include "system/child_process.h"
#include "system/limited_process.h"

namespace {

using MCBinning::CreateResult;
using MCBinning::FileHandle;
using MCBinning::kNoFile;
using MCBinning::NameState;
using mcbinning_tests::files;
using mcbinning_tests::WithoutPrivileges;

class PosixFileSystemTest : public mcbinning_tests::RealFilesTest {
 protected:
  static int LowestFreeHandle() {
    const int handle = dup(STDIN_FILENO);
    close(handle);
    return handle;
  }
};

TEST_F(PosixFileSystemTest, WhateverHasTheNameMakesItTaken) {
  std::filesystem::create_symlink(Name("nowhere"), Name("dangling"));
  std::filesystem::create_symlink(MakeTheirs("file"), Name("link"));
  ASSERT_EQ(mkfifo(Name("pipe").c_str(), 0600), 0);
  for (const char* name : {"dangling", "link", "pipe"}) {
    EXPECT_EQ(files().Probe(Name(name)), NameState::Taken) << name;
  }
}

TEST_F(PosixFileSystemTest, AFileThatMayNotBeReadIsATakenName) {
  const std::string name = MakeTheirs("secret");
  ASSERT_EQ(chmod(name.c_str(), 0), 0);
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0777), 0);
  const WithoutPrivileges limited;
  EXPECT_EQ(files().Probe(name), NameState::Taken);
}

TEST_F(PosixFileSystemTest, ADirectoryOfTooLongANameIsNone) {
  EXPECT_EQ(files().Probe(Name(std::string(5000, 'x') + "/a")), NameState::NoDirectory);
}

TEST_F(PosixFileSystemTest, ALinkThatLeadsToItselfIsNoDirectoryAndNoNameInItTaken) {
  std::filesystem::create_symlink(Name("circle"), Name("circle"));
  EXPECT_EQ(files().Probe(Name("circle/a")), NameState::NoDirectory);
  EXPECT_EQ(files().Probe(Name("circle")), NameState::Taken);
}

TEST_F(PosixFileSystemTest, ADirectoryThatMayNotBeWrittenIsRefused) {
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0555), 0);
  {
    const WithoutPrivileges limited;
    EXPECT_EQ(files().Probe(Name("a")), NameState::DirectoryRefused);
  }
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0700), 0);
}

TEST_F(PosixFileSystemTest, ADirectoryThatMayNotBeEnteredIsRefused) {
  for (const mode_t mode : {0666U, 0U}) {
    ASSERT_EQ(chmod(directory_.Path().c_str(), mode), 0);
    {
      const WithoutPrivileges limited;
      EXPECT_EQ(files().Probe(Name("a")), NameState::DirectoryRefused);
    }
    ASSERT_EQ(chmod(directory_.Path().c_str(), 0700), 0);
  }
}

TEST_F(PosixFileSystemTest, TooManyOpenFilesAreReported) {
  const mcbinning_tests::WithoutFileHandles limited;
  EXPECT_EQ(files().Probe(Name("a")), NameState::TooManyOpenFiles);
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(Name("a"), {}, file), CreateResult::Failed);
  EXPECT_FALSE(files().OpenForReading(Name("a"), file));
}

TEST_F(PosixFileSystemTest, ACreatedFileIsItsOwnersOnlyAndNotInherited) {
  const mode_t mask = umask(0);
  FileHandle file = kNoFile;
  ASSERT_EQ(files().Create(Name("a"), {}, file), CreateResult::Created);
  umask(mask);
  struct stat state {};
  ASSERT_EQ(fstat(static_cast<int>(file), &state), 0);
  EXPECT_EQ(state.st_mode & 07777U, 0600U);
  EXPECT_NE(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_TRUE(files().Close(file));
  FileHandle again = kNoFile;
  ASSERT_TRUE(files().OpenForAppend(Name("a"), again));
  EXPECT_NE(fcntl(static_cast<int>(again), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_TRUE(files().Close(again));
  ASSERT_TRUE(files().OpenForReading(Name("a"), again));
  EXPECT_NE(fcntl(static_cast<int>(again), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_TRUE(files().Close(again));
}

TEST_F(PosixFileSystemTest, NothingIsCreatedOrOpenedThroughALink) {
  std::filesystem::create_symlink(Name("nowhere"), Name("dangling"));
  std::filesystem::create_symlink(MakeTheirs("file"), Name("link"));
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(Name("dangling"), {}, file), CreateResult::NameTaken);
  EXPECT_FALSE(std::filesystem::exists(Name("nowhere")));
  EXPECT_FALSE(files().OpenForAppend(Name("link"), file));
  EXPECT_FALSE(files().OpenForReading(Name("link"), file));
}

TEST_F(PosixFileSystemTest, OnlyARegularFileIsOpenedAndNobodyIsWaitedFor) {
  ASSERT_EQ(mkfifo(Name("pipe").c_str(), 0600), 0);
  alarm(10);  // ends the program
  for (const bool hasReader : {false, true}) {
    const int reader = hasReader ? open(Name("pipe").c_str(), O_RDONLY | O_NONBLOCK) : -1;
    const int before = LowestFreeHandle();
    for (const std::string& name : {Name("pipe"), std::string("/dev/zero")}) {
      FileHandle file = kNoFile;
      EXPECT_FALSE(files().OpenForReading(name, file)) << name;
      EXPECT_FALSE(files().OpenForAppend(name, file)) << name;
      EXPECT_EQ(file, kNoFile);
    }
    EXPECT_EQ(LowestFreeHandle(), before);
    close(reader);
  }
  alarm(0);
}

TEST_F(PosixFileSystemTest, AFileMayHaveTheNumberOfAStandardStream) {
  const int input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(Name("a"), {}, file), CreateResult::Created);
  EXPECT_EQ(file, STDIN_FILENO);
  EXPECT_TRUE(files().Close(file));
  dup2(input, STDIN_FILENO);
  close(input);
}

TEST_F(PosixFileSystemTest, AFullDiskIsNoticed) {
  const FileHandle file = open("/dev/full", O_WRONLY);
  EXPECT_FALSE(files().Write(file, "abc", 3));
  EXPECT_TRUE(files().Close(file));
}

TEST_F(PosixFileSystemTest, AHandleThatIsNoneIsNotClosed) { EXPECT_FALSE(files().Close(kNoFile)); }

void ignoreAlarm(int) {}

/// Interrupts whatever the process waits in, a thousand times a second.
class Interruptions {
 public:
  Interruptions() {
    struct sigaction action {};
    action.sa_handler = ignoreAlarm;  // and no SA_RESTART
    sigaction(SIGALRM, &action, &before_);
    Every(1000);
  }
  ~Interruptions() {
    Every(0);
    sigaction(SIGALRM, &before_, nullptr);
  }

 private:
  static void Every(suseconds_t microseconds) {
    const itimerval timer = {{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &timer, nullptr);
  }

  struct sigaction before_ {};
};

TEST_F(PosixFileSystemTest, InterruptedReadsAndWritesAreTakenUpAgain) {
  std::array<int, 2> there{};
  std::array<int, 2> back{};
  ASSERT_EQ(pipe(there.data()), 0);
  ASSERT_EQ(pipe(back.data()), 0);
  std::vector<char> bytes(1 << 20);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<char>(i % 251);  // no page looks like another
  }
  // A slow reader that sends everything back, slowly too.
  const pid_t child = mcbinning_tests::StartChild([&] {
    close(there[1]);
    close(back[0]);
    usleep(20000);
    std::vector<char> received(bytes.size());
    std::size_t got = 0;
    if (!files().Read(there[0], received.data(), received.size(), got)) {
      return 1;
    }
    usleep(20000);
    return files().Write(back[1], received.data(), got) ? 0 : 2;
  });
  close(there[0]);
  close(back[1]);
  std::vector<char> returned(bytes.size());
  std::size_t bytesRead = 0;
  {
    const Interruptions interruptions;
    EXPECT_TRUE(files().Write(there[1], bytes.data(), bytes.size()));
    EXPECT_TRUE(files().Read(back[0], returned.data(), returned.size(), bytesRead));
  }
  EXPECT_EQ(mcbinning_tests::AnswerOf(child), 0);
  EXPECT_EQ(bytesRead, bytes.size());
  EXPECT_TRUE(returned == bytes);
  close(there[1]);
  close(back[0]);
}

}  // namespace
