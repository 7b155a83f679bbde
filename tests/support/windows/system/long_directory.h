#ifndef MCBINNING_TESTS_SYSTEM_LONG_DIRECTORY_H
#define MCBINNING_TESTS_SYSTEM_LONG_DIRECTORY_H

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace mcbinning_tests {

/// Directories, one in the other, with a path beyond MAX_PATH. They go with the object.
class LongDirectory {
 public:
  explicit LongDirectory(const std::string& parent) : path_(parent) {
    const std::string name(100, 'd');
    const std::filesystem::path whole = std::filesystem::absolute(parent).lexically_normal();
    std::wstring made = L"\\\\?\\" + whole.native();
    while (path_.size() <= MAX_PATH) {
      path_ += "/" + name;
      made += L"\\" + std::wstring(name.begin(), name.end());
      EXPECT_NE(CreateDirectoryW(made.c_str(), nullptr), 0);
      made_.push_back(made);
    }
  }
  LongDirectory(const LongDirectory&) = delete;
  LongDirectory& operator=(const LongDirectory&) = delete;
  ~LongDirectory() {
    for (auto made = made_.rbegin(); made != made_.rend(); ++made) {
      EXPECT_NE(RemoveDirectoryW(made->c_str()), 0);
    }
  }

  /// Without a separator at the end.
  const std::string& Path() const { return path_; }

  bool IsEmpty() const {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW((made_.back() + L"\\*").c_str(), &entry);
    bool isEmpty = search != INVALID_HANDLE_VALUE;
    for (BOOL isThere = isEmpty; isThere != 0; isThere = FindNextFileW(search, &entry)) {
      const std::wstring name = entry.cFileName;
      isEmpty = isEmpty && (name == L"." || name == L"..");
    }
    FindClose(search);
    return isEmpty;
  }

 private:
  std::string path_;
  std::vector<std::wstring> made_;  ///< Each as the system takes it.
};

}  // namespace mcbinning_tests

#endif
