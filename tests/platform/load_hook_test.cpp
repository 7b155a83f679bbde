#include "platform/load_hook.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "system/process.h"

namespace {

#define ACCESSOR_NAME(name) #name,
const std::vector<std::string> accessorNames = {VORLWCOM_COMMON_BLOCK_ACCESSORS(ACCESSOR_NAME)};

TEST(LoadHookTest, ElevenAccessorsOfEachKind) {
  ASSERT_EQ(accessorNames.size(), 22U);
  ASSERT_EQ(MCBinning::kNCommonBlocks, 22);
  for (std::size_t i = 0; i < accessorNames.size(); ++i) {
    EXPECT_EQ(accessorNames[i].rfind(i < 11 ? "pvGetCmn" : "pvGetCma", 0), 0U) << accessorNames[i];
  }
}

TEST(LoadHookTest, ModuleHandleIsTheModuleThatHoldsTheCode) {
  void* const module =
      mcbinning_tests::ModuleOf(reinterpret_cast<const void*>(&MCBinning::getLoadHook));
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(MCBinning::getLoadHook().moduleHandle, module);
}

// This program runs over a host library whose accessors count their calls and of which one lacks.
TEST(LoadHookTest, EachAccessorIsCalledOnceAndAMissingOneIsNull) {
  const auto& blocks = MCBinning::getLoadHook().commonBlocks;
  std::set<const void*> distinct;
  for (std::size_t i = 0; i < accessorNames.size(); ++i) {
    SCOPED_TRACE(accessorNames[i]);
    if (accessorNames[i] == "pvGetCmaBlock07") {
      EXPECT_EQ(blocks.at(i), nullptr);
    } else {
      ASSERT_NE(blocks.at(i), nullptr);
      EXPECT_EQ(*static_cast<const int*>(blocks.at(i)), 1);
      EXPECT_TRUE(distinct.insert(blocks.at(i)).second);
    }
  }
}

}  // namespace
