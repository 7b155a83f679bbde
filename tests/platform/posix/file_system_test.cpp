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
#include <fstream>
#include <string>
#include <vector>

#include "support/scratch_directory.h"
#include "system/child_process.h"
#include "system/limited_process.h"

namespace {

using MCBinning::CreateResult;
using MCBinning::FileHandle;
using MCBinning::FileSystem;
using MCBinning::kNoFile;
using MCBinning::NameState;
using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::WithoutPrivileges;

FileSystem& files() { return MCBinning::realFileSystem(); }

class PosixFileSystemTest : public testing::Test {
 protected:
  ~PosixFileSystemTest() override { directory_.Clear(); }

  std::string Name(const std::string& file) const { return directory_.Path() + "/" + file; }

  std::string MakeFile(const std::string& file) const {
    std::ofstream(Name(file)) << "theirs";
    return Name(file);
  }

  FileHandle MustCreate(const std::string& name) const {
    FileHandle file = kNoFile;
    EXPECT_EQ(files().Create(name, {}, file), CreateResult::Created);
    return file;
  }

  static int LowestFreeHandle() {
    const int handle = dup(STDIN_FILENO);
    close(handle);
    return handle;
  }

  ScratchDirectory directory_;
};

TEST_F(PosixFileSystemTest, ProbeTellsFreeFromTakenAndCreatesNothing) {
  EXPECT_EQ(files().Probe(Name("a")), NameState::Free);
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(files().Probe(MakeFile("b")), NameState::Taken);
}

TEST_F(PosixFileSystemTest, ProbeLeavesNothingOpen) {
  const std::string name = MakeFile("a");
  const int before = LowestFreeHandle();
  EXPECT_EQ(files().Probe(name), NameState::Taken);
  EXPECT_EQ(LowestFreeHandle(), before);
}

TEST_F(PosixFileSystemTest, ProbeOfANameWithoutADirectoryLooksIntoTheCurrentOne) {
  EXPECT_EQ(files().Probe("no-such-file-here"), NameState::Free);
}

TEST_F(PosixFileSystemTest, WhateverHasTheNameMakesItTaken) {
  std::filesystem::create_directory(Name("directory"));
  std::filesystem::create_symlink(Name("nowhere"), Name("dangling"));
  std::filesystem::create_symlink(MakeFile("file"), Name("link"));
  ASSERT_EQ(mkfifo(Name("pipe").c_str(), 0600), 0);
  for (const char* name : {"directory", "dangling", "link", "pipe"}) {
    EXPECT_EQ(files().Probe(Name(name)), NameState::Taken) << name;
  }
}

TEST_F(PosixFileSystemTest, AFileThatMayNotBeReadIsATakenName) {
  const std::string name = MakeFile("secret");
  ASSERT_EQ(chmod(name.c_str(), 0), 0);
  ASSERT_EQ(chmod(directory_.Path().c_str(), 0777), 0);
  const WithoutPrivileges limited;
  EXPECT_EQ(files().Probe(name), NameState::Taken);
}

TEST_F(PosixFileSystemTest, ADirectoryThatIsNotThereOrIsNoneIsReported) {
  EXPECT_EQ(files().Probe(Name("missing/a")), NameState::NoDirectory);
  EXPECT_EQ(files().Probe(MakeFile("file") + "/a"), NameState::NoDirectory);
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
  const FileHandle file = MustCreate(Name("a"));
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

TEST_F(PosixFileSystemTest, NothingIsCreatedOverAFileOrThroughALink) {
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(MakeFile("theirs"), {}, file), CreateResult::NameTaken);
  std::filesystem::create_symlink(Name("nowhere"), Name("dangling"));
  EXPECT_EQ(files().Create(Name("dangling"), {}, file), CreateResult::NameTaken);
  EXPECT_FALSE(std::filesystem::exists(Name("nowhere")));
  EXPECT_EQ(std::filesystem::file_size(Name("theirs")), 6U);
  EXPECT_EQ(files().Create(Name("missing/a"), {}, file), CreateResult::Failed);
  EXPECT_EQ(file, kNoFile);
}

TEST_F(PosixFileSystemTest, NothingIsOpenedThroughALinkOrCreatedByOpening) {
  std::filesystem::create_symlink(MakeFile("file"), Name("link"));
  FileHandle file = kNoFile;
  EXPECT_FALSE(files().OpenForAppend(Name("link"), file));
  EXPECT_FALSE(files().OpenForReading(Name("link"), file));
  EXPECT_FALSE(files().OpenForAppend(Name("missing"), file));
  EXPECT_FALSE(files().OpenForReading(Name("missing"), file));
  EXPECT_FALSE(std::filesystem::exists(Name("missing")));
}

TEST_F(PosixFileSystemTest, OnlyARegularFileIsOpenedAndNobodyIsWaitedFor) {
  std::filesystem::create_directory(Name("directory"));
  ASSERT_EQ(mkfifo(Name("pipe").c_str(), 0600), 0);
  alarm(10);  // ends the program
  for (const bool hasReader : {false, true}) {
    const int reader = hasReader ? open(Name("pipe").c_str(), O_RDONLY | O_NONBLOCK) : -1;
    const int before = LowestFreeHandle();
    for (const std::string& name : {Name("directory"), Name("pipe"), std::string("/dev/zero")}) {
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

TEST_F(PosixFileSystemTest, WhatIsAppendedIsReadBackFromTheStart) {
  FileHandle file = MustCreate(Name("a"));
  EXPECT_TRUE(files().Write(file, "abc", 3));
  EXPECT_TRUE(files().Close(file));
  ASSERT_TRUE(files().OpenForAppend(Name("a"), file));
  EXPECT_TRUE(files().Write(file, "", 0));
  EXPECT_TRUE(files().Write(file, "de", 2));
  EXPECT_TRUE(files().Close(file));

  ASSERT_TRUE(files().OpenForReading(Name("a"), file));
  std::array<char, 10> bytes{};
  std::size_t bytesRead = 99;
  EXPECT_TRUE(files().Read(file, bytes.data(), bytes.size(), bytesRead));
  EXPECT_EQ(std::string(bytes.data(), bytesRead), "abcde");
  EXPECT_TRUE(files().Read(file, bytes.data(), bytes.size(), bytesRead));
  EXPECT_EQ(bytesRead, 0U);
  EXPECT_TRUE(files().SeekToStart(file));
  EXPECT_TRUE(files().Read(file, bytes.data(), 2, bytesRead));
  EXPECT_EQ(std::string(bytes.data(), bytesRead), "ab");
  EXPECT_FALSE(files().Write(file, "x", 1));
  EXPECT_TRUE(files().Close(file));
}

TEST_F(PosixFileSystemTest, AFullDiskIsNoticed) {
  const FileHandle file = open("/dev/full", O_WRONLY);
  EXPECT_FALSE(files().Write(file, "abc", 3));
  EXPECT_TRUE(files().Close(file));
}

TEST_F(PosixFileSystemTest, OperationsOnAHandleThatIsNoneFail) {
  std::size_t bytesRead = 99;
  char byte = 0;
  EXPECT_FALSE(files().Read(kNoFile, &byte, 1, bytesRead));
  EXPECT_EQ(bytesRead, 0U);
  EXPECT_FALSE(files().Write(kNoFile, &byte, 1));
  EXPECT_FALSE(files().SeekToStart(kNoFile));
  EXPECT_FALSE(files().Close(kNoFile));
}

TEST_F(PosixFileSystemTest, RemoveAnswersWhetherTheFileIsGone) {
  EXPECT_TRUE(files().Remove(MakeFile("a"), {}));
  EXPECT_TRUE(files().Remove(Name("a"), {}));
  std::filesystem::create_directory(Name("directory"));
  EXPECT_FALSE(files().Remove(Name("directory"), {}));
}

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
