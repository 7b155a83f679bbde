#include "platform/temp_directory.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "support/scratch_directory.h"

namespace {

using MCBinning::tempDirectory;

TEST(TempDirectoryTest, FollowsTheVariableWhenItNamesADirectory) {
  const char* before = std::getenv("TMP");
  const std::string old = before != nullptr ? before : "";
  const mcbinning_tests::ScratchDirectory directory;
  const std::string name = std::filesystem::path(directory.Path()).make_preferred().string();
  _putenv_s("TMP", name.c_str());
  EXPECT_EQ(tempDirectory(), name);
  EXPECT_TRUE(directory.IsEmpty());
  _putenv_s("TMP", old.c_str());
}

}  // namespace
