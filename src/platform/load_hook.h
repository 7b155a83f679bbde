#ifndef MCBINNING_PLATFORM_LOAD_HOOK_H
#define MCBINNING_PLATFORM_LOAD_HOOK_H

#include <vorlwcom/common_block_names.h>

#include <array>

namespace MCBinning {

#define MCBINNING_COUNT_ACCESSOR(name) +1  // NOLINT(bugprone-macro-parentheses): a sum is built
inline constexpr int kNCommonBlocks = 0 VORLWCOM_COMMON_BLOCK_ACCESSORS(MCBINNING_COUNT_ACCESSOR);
#undef MCBINNING_COUNT_ACCESSOR

/// What the library learns about its host while it is loaded, before any other call.
struct LoadHook {
  /// The module that this code was loaded as: its base address.
  void* moduleHandle = nullptr;

  /// The host's common blocks in the order of the accessors' table; null where the host has no such
  /// accessor. The host owns them.
  std::array<void*, kNCommonBlocks> commonBlocks = {};
};

/// The one record of this module, complete as soon as the module is loaded.
const LoadHook& getLoadHook();

}  // namespace MCBinning

#endif
