#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/scratch_directory.h"
#include "system/process.h"

namespace {

using MCBinning::CreateResult;
using MCBinning::FileHandle;
using MCBinning::FileSystem;
using MCBinning::kNoFile;
using MCBinning::NameState;
using mcbinning_tests::OpenFiles;
using mcbinning_tests::ScratchDirectory;

FileSystem& files() { return MCBinning::realFileSystem(); }

class WindowsFileSystemTest : public testing::Test {
 protected:
  ~WindowsFileSystemTest() override { directory_.Clear(); }

  std::string Name(const std::string& file) const { return directory_.Path() + "/" + file; }

  std::string MakeFile(const std::string& file) const {
    std::ofstream(Name(file)) << "theirs";
    return Name(file);
  }

  ScratchDirectory directory_;
};

/// A file that somebody else has open and shares with nobody.
class UnsharedFile {
 public:
  explicit UnsharedFile(const std::string& name)
      : handle_(CreateFileA(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
  }
  UnsharedFile(const UnsharedFile&) = delete;
  UnsharedFile& operator=(const UnsharedFile&) = delete;
  ~UnsharedFile() { CloseHandle(handle_); }

 private:
  HANDLE handle_;
};

TEST_F(WindowsFileSystemTest, ProbeTellsFreeFromTakenAndCreatesNothing) {
  EXPECT_EQ(files().Probe(Name("a")), NameState::Free);
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(files().Probe(MakeFile("b")), NameState::Taken);
  EXPECT_EQ(files().Probe("no-such-file-here"), NameState::Free);
}

TEST_F(WindowsFileSystemTest, ProbeLeavesNothingOpen) {
  const std::string name = MakeFile("a");
  const std::ptrdiff_t before = OpenFiles();
  EXPECT_EQ(files().Probe(name), NameState::Taken);
  EXPECT_EQ(OpenFiles(), before);
}

TEST_F(WindowsFileSystemTest, WhateverHasTheNameMakesItTaken) {
  std::filesystem::create_directory(Name("directory"));
  EXPECT_EQ(files().Probe(Name("directory")), NameState::Taken);
  const UnsharedFile unshared(MakeFile("unshared"));
  EXPECT_EQ(files().Probe(Name("unshared")), NameState::Taken);
}

TEST_F(WindowsFileSystemTest, ADirectoryThatIsNotThereOrIsNoneIsReported) {
  EXPECT_EQ(files().Probe(Name("missing/a")), NameState::NoDirectory);
  EXPECT_EQ(files().Probe(MakeFile("file") + "/a"), NameState::NoDirectory);
}

TEST_F(WindowsFileSystemTest, NothingIsCreatedOverAFile) {
  FileHandle file = kNoFile;
  EXPECT_EQ(files().Create(MakeFile("theirs"), {}, file), CreateResult::NameTaken);
  EXPECT_EQ(std::filesystem::file_size(Name("theirs")), 6U);
  EXPECT_EQ(files().Create(Name("missing/a"), {}, file), CreateResult::Failed);
  EXPECT_EQ(file, kNoFile);
}

TEST_F(WindowsFileSystemTest, OnlyAFileThatIsThereAndSharedIsOpened) {
  std::filesystem::create_directory(Name("directory"));
  const UnsharedFile unshared(MakeFile("unshared"));
  for (const std::string& name :
       {Name("missing"), Name("directory"), Name("unshared"), std::string("NUL")}) {
    FileHandle file = kNoFile;
    EXPECT_FALSE(files().OpenForAppend(name, file)) << name;
    EXPECT_FALSE(files().OpenForReading(name, file)) << name;
    EXPECT_EQ(file, kNoFile);
  }
  EXPECT_FALSE(std::filesystem::exists(Name("missing")));
}

TEST_F(WindowsFileSystemTest, WhatIsAppendedIsReadBackFromTheStart) {
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

TEST_F(WindowsFileSystemTest, OperationsOnAHandleThatIsNoneFail) {
  std::size_t bytesRead = 99;
  char byte = 0;
  EXPECT_FALSE(files().Read(kNoFile, &byte, 1, bytesRead));
  EXPECT_EQ(bytesRead, 0U);
  EXPECT_FALSE(files().Write(kNoFile, &byte, 1));
  EXPECT_FALSE(files().SeekToStart(kNoFile));
}

TEST_F(WindowsFileSystemTest, RemoveAnswersWhetherTheFileIsGone) {
  EXPECT_TRUE(files().Remove(MakeFile("a"), {}));
  EXPECT_TRUE(files().Remove(Name("a"), {}));
  std::filesystem::create_directory(Name("directory"));
  EXPECT_FALSE(files().Remove(Name("directory"), {}));
  {
    const UnsharedFile unshared(MakeFile("unshared"));
    EXPECT_FALSE(files().Remove(Name("unshared"), {}));
  }
  EXPECT_TRUE(files().Remove(Name("unshared"), {}));
}

TEST_F(WindowsFileSystemTest, AFileMadeReadOnlyMeanwhileIsRemoved) {
  const std::string name = MakeFile("a");
  ASSERT_NE(SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_TRUE(files().Remove(name, {}));
  EXPECT_TRUE(directory_.IsEmpty());
}

}  // namespace
