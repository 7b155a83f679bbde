#include "toolkit/system/temporary_directory.h"

#include <fmt/format.h>
#include <windows.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/system/files.h"
#include "toolkit/system/paths.h"
#include "toolkit/system/windows/last_error.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::string_view kNameStart = "mcbin-";
constexpr std::size_t kNameLength = 14;
constexpr const char* kLockName = ".mcbin-lock";

[[noreturn]] void fail(const std::string& root) {
  setErrnoFromLastError();
  const char* const reason = std::strerror(errno);
  throw DataError(
      fmt::format("cannot make a temporary directory in {}: {}", visibleText(root), reason));
}

/// A file that nobody opens beside the one who has: while its process lives, that is.
HANDLE openLock(const std::string& directory, DWORD disposition) {
  return CreateFileW(pathOf(directory + "/" + kLockName).c_str(), GENERIC_READ | DELETE, 0, nullptr,
                     disposition, FILE_ATTRIBUTE_HIDDEN, nullptr);
}

bool removeFile(const std::string& path) { return DeleteFileW(pathOf(path).c_str()) != 0; }

void removeFolder(const std::string& path) { RemoveDirectoryW(pathOf(path).c_str()); }

/// The paths of what is in the directory; none when it cannot be read.
std::vector<std::string> entriesOf(const std::string& directory) {
  std::error_code unreadable;
  std::vector<std::string> entries = namesIn(directory, unreadable);
  for (std::string& entry : entries) entry = fmt::format("{}/{}", directory, entry);
  return entries;
}

/// Removes what is in the directory but its lock: files, and folders with nothing but files in
/// them, as the library keeps one beside its columns.
void removeEntries(const std::string& directory) {
  for (const std::string& path : entriesOf(directory)) {
    if (path.ends_with(kLockName) || removeFile(path)) continue;
    for (const std::string& inner : entriesOf(path)) removeFile(inner);
    removeFolder(path);
  }
}

/// The lock goes last: whatever stops this midway, what is left is still known for what it is.
void removeAll(const std::string& directory, HANDLE lock) {
  removeEntries(directory);
  CloseHandle(lock);
  removeFile(directory + "/" + kLockName);
  removeFolder(directory);
}

/// Removes the directory when it is one of ours whose process has died.
void removeIfLeft(const std::string& root, const std::string& name) {
  if (name.size() != kNameLength || !name.starts_with(kNameStart)) return;
  const std::string left = fmt::format("{}/{}", root, name);
  const HANDLE lock = openLock(left, OPEN_EXISTING);
  if (lock != INVALID_HANDLE_VALUE) removeAll(left, lock);
}

}  // namespace

struct TemporaryDirectory::Handles {
  HANDLE lock;
};

std::string temporaryRoot() {
  const char* const directory = std::getenv("TMPDIR");
  if (directory != nullptr && *directory != '\0') return directory;
  std::array<wchar_t, MAX_PATH + 1> path{};
  GetTempPathW(static_cast<DWORD>(path.size()), path.data());
  std::string root = bytesOf(path.data());
  while (!root.empty() && root.back() == '\\') root.pop_back();
  return root;
}

TemporaryDirectory::TemporaryDirectory(const std::string& root) {
  std::error_code unreadable;
  for (const std::string& name : namesIn(root, unreadable)) removeIfLeft(root, name);
  std::random_device dice;
  do {
    path_ = fmt::format("{}/mcbin-{:08x}", root, dice());
    if (CreateDirectoryW(pathOf(path_).c_str(), nullptr) != 0) {
      handles_.reset(new Handles{openLock(path_, CREATE_NEW)});
      if (handles_->lock != INVALID_HANDLE_VALUE) return;
      const DWORD reason = GetLastError();
      removeFolder(path_);
      SetLastError(reason);
      fail(root);
    }
  } while (GetLastError() == ERROR_ALREADY_EXISTS);
  fail(root);
}

TemporaryDirectory::~TemporaryDirectory() { removeAll(path_, handles_->lock); }

}  // namespace mcbin
