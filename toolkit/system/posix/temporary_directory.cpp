#include "toolkit/system/temporary_directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::string_view kNameStart = "mcbin-";
constexpr std::string_view kNameEnd = "XXXXXX";  // mkdtemp() puts something random in its place
constexpr const char* kLockName = ".mcbin-lock";

[[noreturn]] void fail(const std::string& root) {
  const char* const reason = std::strerror(errno);
  throw DataError(
      fmt::format("cannot make a temporary directory in {}: {}", visibleText(root), reason));
}

bool isOwnName(std::string_view name) {
  return name.size() == kNameStart.size() + kNameEnd.size() &&
         name.substr(0, kNameStart.size()) == kNameStart;
}

/// Removes a folder with nothing but files in it, as the library keeps one beside its columns.
void removeFolder(int parent, const char* name) {
  const int descriptor = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  DIR* const folder = descriptor < 0 ? nullptr : ::fdopendir(descriptor);
  if (folder == nullptr) {
    if (descriptor >= 0) ::close(descriptor);
    return;
  }
  while (const dirent* const entry = ::readdir(folder)) {
    ::unlinkat(descriptor, entry->d_name, 0);
  }
  ::closedir(folder);
  ::unlinkat(parent, name, AT_REMOVEDIR);
}

/// Removes the files in the directory, the lock last: whatever stops this midway, what is left is
/// still known for what it is.
void removeFiles(DIR* directory) {
  ::rewinddir(directory);
  while (const dirent* const entry = ::readdir(directory)) {
    const std::string_view name = entry->d_name;
    if (name == kLockName || name == "." || name == "..") continue;
    if (::unlinkat(::dirfd(directory), entry->d_name, 0) != 0) {
      removeFolder(::dirfd(directory), entry->d_name);
    }
  }
  ::unlinkat(::dirfd(directory), kLockName, 0);
}

/// Removes the directory `name` when it is one of ours whose process has died, which the lock says.
void removeIfLeft(int root, const char* name) {
  const int descriptor = ::openat(root, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) return;
  DIR* const directory = ::fdopendir(descriptor);
  if (directory == nullptr) {
    ::close(descriptor);
    return;
  }
  struct stat status = {};
  const int lock = ::openat(descriptor, kLockName, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  const bool hasNone = lock < 0 && errno == ENOENT;
  const bool isOurs = ::fstat(descriptor, &status) == 0 && status.st_uid == ::geteuid();
  if (isOurs && lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) == 0) {
    removeFiles(directory);
    ::unlinkat(root, name, AT_REMOVEDIR);
  } else if (isOurs && hasNone && (status.st_mode & 0777U) == 0700U) {
    // Its process died, or is, between making it and its lock: goes when it is empty.
    ::unlinkat(root, name, AT_REMOVEDIR);
  }
  if (lock >= 0) ::close(lock);
  ::closedir(directory);
}

void removeThoseLeft(const std::string& root) {
  DIR* const directory = ::opendir(root.c_str());
  if (directory == nullptr) return;
  while (const dirent* const entry = ::readdir(directory)) {
    if (isOwnName(entry->d_name)) removeIfLeft(::dirfd(directory), entry->d_name);
  }
  ::closedir(directory);
}

/// False when another run took the new directory, not locked yet, for one that was left.
bool make(const std::string& root, std::string& path, DIR*& directory, int& lock) {
  path = fmt::format("{}/{}{}", root, kNameStart, kNameEnd);
  if (::mkdtemp(path.data()) == nullptr) fail(root);
  directory = ::opendir(path.c_str());
  lock = directory == nullptr
             ? -1
             : ::openat(::dirfd(directory), kLockName, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (lock < 0) {
    const int reason = errno;
    if (directory != nullptr) ::closedir(directory);
    if (::rmdir(path.c_str()) != 0 && errno == ENOENT) return false;
    errno = reason;
    fail(root);
  }
  // A file system without locks keeps directories of dead processes, as nobody gets a lock there.
  const bool isTaken = ::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  struct stat status = {};
  const bool isRemoved = ::fstat(lock, &status) == 0 && status.st_nlink == 0;
  if (!isTaken && !isRemoved) return true;
  ::close(lock);
  ::closedir(directory);
  return false;
}

}  // namespace

std::string temporaryRoot() {
  const char* const directory = std::getenv("TMPDIR");
  return directory != nullptr && *directory != '\0' ? directory : "/tmp";
}

struct TemporaryDirectory::Handles {
  pid_t process;
  DIR* directory;
  int lock;
};

TemporaryDirectory::TemporaryDirectory(const std::string& root)
    : handles_(new Handles{::getpid(), nullptr, -1}) {
  removeThoseLeft(root);
  while (!make(root, path_, handles_->directory, handles_->lock)) {
  }
}

TemporaryDirectory::~TemporaryDirectory() {
  if (handles_->process == ::getpid()) {
    removeFiles(handles_->directory);
    ::rmdir(path_.c_str());
  }
  ::closedir(handles_->directory);
  ::close(handles_->lock);
}

}  // namespace mcbin
