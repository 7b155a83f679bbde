#include "platform/file_claim.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>

#include "support/real_files.h"
#include "system/process.h"

namespace {

namespace fs = std::filesystem;

using MCBinning::CreateResult;
using MCBinning::FileClaim;
using MCBinning::kNoFile;
using mcbinning_tests::files;
using mcbinning_tests::makeOurs;

using FileClaimTest = mcbinning_tests::RealFilesTest;

TEST_F(FileClaimTest, AClaimedFileIsThereUnderItsNameUntilItIsRemoved) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
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
  MakeTheirs("1a");
  const std::ptrdiff_t before = mcbinning_tests::OpenFiles();
  EXPECT_EQ(makeOurs(claim, Name("1a")), CreateResult::NameTaken);
  EXPECT_EQ(mcbinning_tests::OpenFiles(), before);
  EXPECT_EQ(makeOurs(claim, Name("missing/1a")), CreateResult::Failed);
  ASSERT_EQ(makeOurs(claim, Name("1b")), CreateResult::Created);
  fs::remove(Name("1b"));
  MakeTheirs("1b");
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
  EXPECT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  EXPECT_TRUE(directory_.IsEmpty());
}

TEST_F(FileClaimTest, WhatALivingProcessHoldsIsLeft) {
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(Prefix(), claim));
  ASSERT_EQ(makeOurs(claim, Name("1a")), CreateResult::Created);
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(fs::file_size(Name("1a")), 4U);
  EXPECT_TRUE(files().Remove(Name("1a"), claim));
  files().DropClaim(claim, true);
}

}  // namespace
