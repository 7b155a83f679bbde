#include "platform/file_claim.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/scratch_directory.h"
#include "system/child_process.h"
#include "system/process.h"

namespace {

namespace fs = std::filesystem;

using MCBinning::CreateResult;
using MCBinning::FileClaim;
using MCBinning::FileHandle;
using MCBinning::FileSystem;
using MCBinning::kNoFile;
using mcbinning_tests::ChildProcess;
using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::TaskOfChild;

FileSystem& files() { return MCBinning::realFileSystem(); }

CreateResult create(const FileClaim& claim, const std::string& name) {
  FileHandle handle = kNoFile;
  const CreateResult result = files().Create(name, claim, handle);
  if (result == CreateResult::Created) {
    EXPECT_TRUE(files().Write(handle, "ours", 4));
    EXPECT_TRUE(files().Close(handle));
  }
  return result;
}

class FileClaimTest : public testing::Test {
 protected:
  ~FileClaimTest() override { directory_.Clear(); }

  std::string Prefix() const { return directory_.Path() + "/"; }
  std::string Name(const std::string& file) const { return Prefix() + file; }

  /// A process that is killed with a claim of the files 1a, 1b, 1c.
  void Abandon() const {
    const ChildProcess child("FileClaimChild.ClaimsAndIsKilled", Prefix());
    EXPECT_EQ(child.Answer(), ChildProcess::kKilled);
  }

  std::size_t NumberOfEntries() const { return directory_.Entries().size(); }

  ScratchDirectory directory_;
};

TEST(FileClaimChild, ClaimsAndIsKilled) {
  const std::string prefix = TaskOfChild();
  if (prefix.empty()) {
    return;
  }
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(prefix, claim));
  for (const char* name : {"1a", "1b", "1c"}) {
    ASSERT_EQ(create(claim, prefix + name), CreateResult::Created);
  }
  TerminateProcess(GetCurrentProcess(), ChildProcess::kKilled);
}

TEST_F(FileClaimTest, AClaimedFileIsThereUnderItsNameUntilItIsRemoved) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(create(claim, Name("1a")), CreateResult::Created);
  EXPECT_TRUE(fs::exists(claim.name + "/1a"));
  EXPECT_EQ(fs::file_size(Name("1a")), 4U);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  EXPECT_EQ(NumberOfEntries(), 1U);
  files().DropClaim(claim, true);
  EXPECT_TRUE(directory_.IsEmpty());
  EXPECT_EQ(claim.handle, kNoFile);
}

TEST_F(FileClaimTest, ANameThatIsTakenIsLeftToWhoeverHasIt) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  std::ofstream(Name("1a")) << "theirs";
  const std::ptrdiff_t before = mcbinning_tests::OpenFiles();
  EXPECT_EQ(create(claim, Name("1a")), CreateResult::NameTaken);
  EXPECT_EQ(mcbinning_tests::OpenFiles(), before);
  EXPECT_EQ(create(claim, Name("missing/1a")), CreateResult::Failed);
  ASSERT_EQ(create(claim, Name("1b")), CreateResult::Created);
  fs::remove(Name("1b"));
  std::ofstream(Name("1b")) << "theirs";
  EXPECT_TRUE(files().Remove(Name("1b"), claim));
  files().DropClaim(claim, true);
  EXPECT_EQ(NumberOfEntries(), 2U);
  EXPECT_EQ(fs::file_size(Name("1a")), 6U);
  EXPECT_EQ(fs::file_size(Name("1b")), 6U);
}

TEST_F(FileClaimTest, FilesAreMadeWithoutAClaimWhereThereCanBeNone) {
  FileClaim claim;
  EXPECT_FALSE(files().MakeClaim(Name("missing/"), claim));
  files().RemoveAbandoned(Name("missing/"));
  EXPECT_EQ(claim.handle, kNoFile);
  EXPECT_EQ(create(claim, Name("1a")), CreateResult::Created);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(FileClaimTest, WhatAKilledProcessHadClaimedIsRemoved) {
  Abandon();
  EXPECT_EQ(NumberOfEntries(), 4U);
  // Others' files of such names, one of them in place of a claimed one.
  fs::remove(Name("1b"));
  std::ofstream(Name("1b")) << "theirs";
  std::ofstream(Name("1d")) << "theirs";
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 2U);
  EXPECT_EQ(fs::file_size(Name("1b")) + fs::file_size(Name("1d")), 12U);
}

TEST_F(FileClaimTest, WhatALivingProcessHoldsIsLeft) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(create(claim, Name("1a")), CreateResult::Created);
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(fs::file_size(Name("1a")), 4U);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  files().DropClaim(claim, true);
}

}  // namespace
