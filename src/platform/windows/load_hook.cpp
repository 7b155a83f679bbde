#include "platform/load_hook.h"

#include <windows.h>

// Imported, so that the system loads the host's library before this one: code that runs while a
// library is loaded must load no other.
extern "C" __declspec(dllimport) void* pvGetCmnBlock01();

namespace MCBinning {

namespace {

HMODULE moduleOf(void* (*function)()) {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(function), &module);
  return module;
}

void* findModule() { return moduleOf(&findModule); }

// Of the other accessors, one that the host lacks leaves a null pointer.
void* callAccessor(const char* name) {
  const FARPROC found = GetProcAddress(moduleOf(&pvGetCmnBlock01), name);
  const auto accessor = reinterpret_cast<void* (*)()>(reinterpret_cast<void*>(found));
  return accessor != nullptr ? accessor() : nullptr;
}

#define MCBINNING_CALL_ACCESSOR(name) callAccessor(#name),
const LoadHook loadHook = {findModule(),
                           {VORLWCOM_COMMON_BLOCK_ACCESSORS(MCBINNING_CALL_ACCESSOR)}};
#undef MCBINNING_CALL_ACCESSOR

}  // namespace

const LoadHook& getLoadHook() { return loadHook; }

}  // namespace MCBinning
