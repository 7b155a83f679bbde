#include "platform/file_claim.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "support/real_files.h"
#include "system/child_process.h"
#include "system/long_directory.h"

namespace {

namespace fs = std::filesystem;

using MCBinning::CreateResult;
using MCBinning::FileClaim;
using mcbinning_tests::ChildProcess;
using mcbinning_tests::files;
using mcbinning_tests::LongDirectory;
using mcbinning_tests::makeOurs;
using mcbinning_tests::TaskOfChild;

using WindowsFileClaimTest = mcbinning_tests::RealFilesTest;

TEST(FileClaimChild, ClaimsAndIsKilled) {
  const std::string prefix = TaskOfChild();
  if (prefix.empty()) {
    return;
  }
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(prefix, claim));
  for (const char* name : {"1a", "1b", "1c"}) {
    ASSERT_EQ(makeOurs(claim, prefix + name), CreateResult::Created);
  }
  TerminateProcess(GetCurrentProcess(), ChildProcess::kKilled);
}

TEST_F(WindowsFileClaimTest, WhatAKilledProcessHadClaimedIsRemoved) {
  const ChildProcess child("FileClaimChild.ClaimsAndIsKilled", Prefix());
  ASSERT_EQ(child.Answer(), ChildProcess::kKilled);
  EXPECT_EQ(NumberOfEntries(), 4U);
  // Others' files of such names, one of them in place of a claimed one.
  fs::remove(Name("1b"));
  MakeTheirs("1b");
  MakeTheirs("1d");
  files().RemoveAbandoned(Prefix());
  EXPECT_EQ(NumberOfEntries(), 2U);
  EXPECT_EQ(fs::file_size(Name("1b")) + fs::file_size(Name("1d")), 12U);
}

TEST_F(WindowsFileClaimTest, ADirectoryMayHaveALongPath) {
  const LongDirectory directory(directory_.Path());
  const std::string prefix = directory.Path() + "/";
  FileClaim claim;
  ASSERT_TRUE(files().MakeClaim(prefix, claim));
  ASSERT_EQ(makeOurs(claim, prefix + "1a"), CreateResult::Created);
  EXPECT_EQ(files().Probe(prefix + "1a"), MCBinning::NameState::Taken);
  EXPECT_EQ(files().Probe(prefix + "1b"), MCBinning::NameState::Free);
  EXPECT_TRUE(files().Remove(prefix + "1a", claim));
  files().DropClaim(claim, true);
  EXPECT_TRUE(directory.IsEmpty());

  const ChildProcess child("FileClaimChild.ClaimsAndIsKilled", prefix);
  EXPECT_EQ(child.Answer(), ChildProcess::kKilled);
  EXPECT_FALSE(directory.IsEmpty());
  files().RemoveAbandoned(prefix);
  EXPECT_TRUE(directory.IsEmpty());
}

}  // namespace
