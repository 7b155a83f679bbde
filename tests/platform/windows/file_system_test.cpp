#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/real_files.h"

namespace {

using MCBinning::FileHandle;
using MCBinning::kNoFile;
using MCBinning::NameState;
using mcbinning_tests::files;

using WindowsFileSystemTest = mcbinning_tests::RealFilesTest;

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

TEST_F(WindowsFileSystemTest, AFileThatIsNotSharedIsTakenAndNeitherOpenedNorRemoved) {
  const std::string name = MakeTheirs("unshared");
  {
    const UnsharedFile unshared(name);
    EXPECT_EQ(files().Probe(name), NameState::Taken);
    FileHandle file = kNoFile;
    EXPECT_FALSE(files().OpenForAppend(name, file));
    EXPECT_FALSE(files().OpenForReading(name, file));
    EXPECT_FALSE(files().Remove(name, {}));
  }
  EXPECT_TRUE(files().Remove(name, {}));
}

TEST_F(WindowsFileSystemTest, ADeviceIsNotOpened) {
  FileHandle file = kNoFile;
  EXPECT_FALSE(files().OpenForAppend("NUL", file));
  EXPECT_FALSE(files().OpenForReading("NUL", file));
  EXPECT_EQ(file, kNoFile);
}

TEST_F(WindowsFileSystemTest, AFileMadeReadOnlyMeanwhileIsRemoved) {
  const std::string name = MakeTheirs("a");
  ASSERT_NE(SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_TRUE(files().Remove(name, {}));
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(WindowsFileSystemTest, APathThatIsTooLongIsInNoDirectory) {
  EXPECT_EQ(files().Probe(Name(std::string(5000, 'a'))), NameState::NoDirectory);
}

}  // namespace
