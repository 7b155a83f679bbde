#include "platform/file_system.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

#include "support/real_files.h"
#include "system/process.h"

namespace {

using MCBinning::CreateResult;
using MCBinning::FileHandle;
using MCBinning::kNoFile;
using MCBinning::NameState;
using mcbinning_tests::files;
using mcbinning_tests::OpenFiles;

using FileSystemTest = mcbinning_tests::RealFilesTest;

TEST_F(FileSystemTest, ProbeTellsFreeFromTakenAndCreatesNothing) {
  EXPECT_EQ(files().Probe(Name("a")), NameState::Free);
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(files().Probe(MakeTheirs("b")), NameState::Taken);
  std::filesystem::create_directory(Name("directory"));
  EXPECT_EQ(files().Probe(Name("directory")), NameState::Taken);
}

TEST_F(FileSystemTest, ProbeLeavesNothingOpen) {
  const std::string name = MakeTheirs("a");
  const std::ptrdiff_t before = OpenFiles();
  EXPECT_EQ(files().Probe(name), NameState::Taken);
  EXPECT_EQ(OpenFiles(), before);
}

TEST_F(FileSystemTest, ProbeOfANameWithoutADirectoryLooksIntoTheCurrentOne) {
  EXPECT_EQ(files().Probe("no-such-file-here"), NameState::Free);
}

TEST_F(FileSystemTest, ADirectoryThatIsNotThereOrIsNoneIsReported) {
  EXPECT_EQ(files().Probe(Name("missing/a")), NameState::NoDirectory);
  EXPECT_EQ(files().Probe(MakeTheirs("file") + "/a"), NameState::NoDirectory);
}

TEST_F(FileSystemTest, NothingIsCreatedOverAFile) {
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(MakeTheirs("theirs"), {}, file), CreateResult::NameTaken);
  EXPECT_EQ(std::filesystem::file_size(Name("theirs")), 6U);
  EXPECT_EQ(files().Create(Name("missing/a"), {}, file), CreateResult::Failed);
  EXPECT_EQ(file, kNoFile);
}

TEST_F(FileSystemTest, OnlyAFileThatIsThereIsOpened) {
  std::filesystem::create_directory(Name("directory"));
  for (const char* name : {"missing", "directory"}) {
    FileHandle file = kNoFile;
    EXPECT_FALSE(files().OpenForAppend(Name(name), file)) << name;
    EXPECT_FALSE(files().OpenForReading(Name(name), file)) << name;
    EXPECT_EQ(file, kNoFile);
  }
  EXPECT_FALSE(std::filesystem::exists(Name("missing")));
}

TEST_F(FileSystemTest, WhatIsAppendedIsReadBackFromTheStart) {
  FileHandle file = kNoFile;
  ASSERT_EQ(files().Create(Name("a"), {}, file), CreateResult::Created);
  EXPECT_TRUE(files().Write(file, "a\r\n\x1a", 4));
  EXPECT_TRUE(files().Close(file));
  ASSERT_TRUE(files().OpenForAppend(Name("a"), file));
  EXPECT_TRUE(files().Write(file, "", 0));
  EXPECT_TRUE(files().Write(file, "\nb", 2));
  EXPECT_TRUE(files().Close(file));

  ASSERT_TRUE(files().OpenForReading(Name("a"), file));
  std::array<char, 10> bytes{};
  std::size_t bytesRead = 99;
  EXPECT_TRUE(files().Read(file, bytes.data(), bytes.size(), bytesRead));
  EXPECT_EQ(std::string(bytes.data(), bytesRead), "a\r\n\x1a\nb");
  EXPECT_TRUE(files().Read(file, bytes.data(), bytes.size(), bytesRead));
  EXPECT_EQ(bytesRead, 0U);
  EXPECT_TRUE(files().SeekToStart(file));
  EXPECT_TRUE(files().Read(file, bytes.data(), 2, bytesRead));
  EXPECT_EQ(std::string(bytes.data(), bytesRead), "a\r");
  EXPECT_FALSE(files().Write(file, "x", 1));
  EXPECT_TRUE(files().Close(file));
}

TEST_F(FileSystemTest, OperationsOnAHandleThatIsNoneFail) {
  std::size_t bytesRead = 99;
  char byte = 0;
  EXPECT_FALSE(files().Read(kNoFile, &byte, 1, bytesRead));
  EXPECT_EQ(bytesRead, 0U);
  EXPECT_FALSE(files().Write(kNoFile, &byte, 1));
  EXPECT_FALSE(files().SeekToStart(kNoFile));
}

TEST_F(FileSystemTest, RemoveAnswersWhetherTheFileIsGone) {
  EXPECT_TRUE(files().Remove(MakeTheirs("a"), {}));
  EXPECT_TRUE(files().Remove(Name("a"), {}));
  std::filesystem::create_directory(Name("directory"));
  EXPECT_FALSE(files().Remove(Name("directory"), {}));
}

}  // namespace
