#ifndef MCBINNING_TESTS_SYSTEM_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_PROCESS_H

#include <dlfcn.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

namespace mcbinning_tests {

/// Files that this process has open.
inline std::ptrdiff_t OpenFiles() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                       std::filesystem::directory_iterator());
}

inline void SetVariable(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}

/// The base address of the module that holds the code; null when none does.
inline void* ModuleOf(const void* code) {
  Dl_info info = {};
  return dladdr(code, &info) != 0 ? info.dli_fbase : nullptr;
}

}  // namespace mcbinning_tests

#endif
