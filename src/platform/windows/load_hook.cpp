#include "platform/load_hook.h"

#include <windows.h>

namespace MCBinning {

namespace {

HMODULE findModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&findModule), &module);
  return module;
}

// A host that lacks an accessor, or the whole library, leaves a null pointer: not linked against,
// it is loaded here unless the host has done so.
void* callAccessor(const char* name) {
  const HMODULE host = LoadLibraryW(L"VORLWCOM.dll");
  const auto accessor =
      host != nullptr
          ? reinterpret_cast<void* (*)()>(reinterpret_cast<void*>(GetProcAddress(host, name)))
          : nullptr;
  return accessor != nullptr ? accessor() : nullptr;
}

#define MCBINNING_CALL_ACCESSOR(name) callAccessor(#name),
const LoadHook loadHook = {findModule(),
                           {VORLWCOM_COMMON_BLOCK_ACCESSORS(MCBINNING_CALL_ACCESSOR)}};
#undef MCBINNING_CALL_ACCESSOR

}  // namespace

const LoadHook& getLoadHook() { return loadHook; }

}  // namespace MCBinning
