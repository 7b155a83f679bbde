#ifndef MCBINNING_TESTS_SYSTEM_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_PROCESS_H

#include <windows.h>

#include <cstddef>
#include <cstdlib>
#include <string>

namespace mcbinning_tests {

/// Files, and whatever else has a handle, that this process has open.
inline std::ptrdiff_t OpenFiles() {
  DWORD handles = 0;
  GetProcessHandleCount(GetCurrentProcess(), &handles);
  return static_cast<std::ptrdiff_t>(handles);
}

inline void SetVariable(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}

/// The base address of the module that holds the code; null when none does.
inline void* ModuleOf(const void* code) {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<LPCWSTR>(code), &module);
  return module;
}

}  // namespace mcbinning_tests

#endif
