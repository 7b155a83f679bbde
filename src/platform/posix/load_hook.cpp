#include "platform/load_hook.h"

#include <dlfcn.h>

// Weak: a host that lacks an accessor leaves a null address instead of failing the load.
#define MCBINNING_DECLARE_ACCESSOR(name) extern "C" __attribute__((weak)) void* name();
VORLWCOM_COMMON_BLOCK_ACCESSORS(MCBINNING_DECLARE_ACCESSOR)
#undef MCBINNING_DECLARE_ACCESSOR

namespace MCBinning {

namespace {

void* callAccessor(void* (*accessor)()) { return accessor != nullptr ? accessor() : nullptr; }

void* findModule() {
  Dl_info info = {};
  return dladdr(reinterpret_cast<const void*>(&findModule), &info) != 0 ? info.dli_fbase : nullptr;
}

#define MCBINNING_CALL_ACCESSOR(name) callAccessor(&(name)),
const LoadHook loadHook = {findModule(),
                           {VORLWCOM_COMMON_BLOCK_ACCESSORS(MCBINNING_CALL_ACCESSOR)}};
#undef MCBINNING_CALL_ACCESSOR

}  // namespace

const LoadHook& getLoadHook() { return loadHook; }

}  // namespace MCBinning
