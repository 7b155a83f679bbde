#include "toolkit/system/temporary_directory.h"

#include <fmt/format.h>
#include <windows.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <random>

#include "toolkit/errors.h"
#include "toolkit/system/windows/last_error.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr const char* kNamePattern = "mcbin-????????";
constexpr const char* kLockName = ".mcbin-lock";

[[noreturn]] void fail(const std::string& root) {
  setErrnoFromLastError();
  const char* const reason = std::strerror(errno);
  throw DataError(
      fmt::format("cannot make a temporary directory in {}: {}", visibleText(root), reason));
}

/// A file that nobody opens beside the one who has: while its process lives, that is.
HANDLE openLock(const std::string& directory, DWORD disposition) {
  return CreateFileA((directory + "/" + kLockName).c_str(), GENERIC_READ | DELETE, 0, nullptr,
                     disposition, FILE_ATTRIBUTE_HIDDEN, nullptr);
}

/// Calls `take` with the path of every entry of `directory` that matches, but for its own lock.
template <typename Take>
void forEachEntry(const std::string& directory, const char* pattern, Take take) {
  WIN32_FIND_DATAA entry = {};
  const HANDLE search = FindFirstFileA((directory + "/" + pattern).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::string_view name = entry.cFileName;
    if (name != "." && name != ".." && name != kLockName) {
      take(fmt::format("{}/{}", directory, name));
    }
  } while (FindNextFileA(search, &entry) != 0);
  FindClose(search);
}

/// Removes what is in the directory: files, and folders with nothing but files in them, as the
/// library keeps one beside its columns.
void removeEntries(const std::string& directory) {
  forEachEntry(directory, "*", [](const std::string& path) {
    if (DeleteFileA(path.c_str()) != 0) return;
    forEachEntry(path, "*", [](const std::string& inner) { DeleteFileA(inner.c_str()); });
    RemoveDirectoryA(path.c_str());
  });
}

/// The lock goes last: whatever stops this midway, what is left is still known for what it is.
void removeAll(const std::string& directory, HANDLE lock) {
  removeEntries(directory);
  CloseHandle(lock);
  DeleteFileA((directory + "/" + kLockName).c_str());
  RemoveDirectoryA(directory.c_str());
}

}  // namespace

struct TemporaryDirectory::Handles {
  HANDLE lock;
};

std::string temporaryRoot() {
  const char* const directory = std::getenv("TMPDIR");
  if (directory != nullptr && *directory != '\0') return directory;
  std::array<char, MAX_PATH + 1> path{};
  std::string root(path.data(), GetTempPathA(static_cast<DWORD>(path.size()), path.data()));
  while (!root.empty() && root.back() == '\\') root.pop_back();
  return root;
}

TemporaryDirectory::TemporaryDirectory(const std::string& root) {
  forEachEntry(root, kNamePattern, [](const std::string& left) {
    const HANDLE lock = openLock(left, OPEN_EXISTING);
    if (lock != INVALID_HANDLE_VALUE) removeAll(left, lock);
  });
  std::random_device dice;
  do {
    path_ = fmt::format("{}/mcbin-{:08x}", root, dice());
    if (CreateDirectoryA(path_.c_str(), nullptr) != 0) {
      handles_.reset(new Handles{openLock(path_, CREATE_NEW)});
      if (handles_->lock != INVALID_HANDLE_VALUE) return;
      const DWORD reason = GetLastError();
      RemoveDirectoryA(path_.c_str());
      SetLastError(reason);
      fail(root);
    }
  } while (GetLastError() == ERROR_ALREADY_EXISTS);
  fail(root);
}

TemporaryDirectory::~TemporaryDirectory() { removeAll(path_, handles_->lock); }

}  // namespace mcbin
