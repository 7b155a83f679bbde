#include "platform/file_claim.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace MCBinning {
namespace {

constexpr char kClaimPrefix[] = "mcbinning-columns-";
constexpr char kRandomPart[] = "XXXXXX";
constexpr std::size_t kPrefixLength = sizeof kClaimPrefix - 1;
constexpr std::size_t kClaimLength = kPrefixLength + sizeof kRandomPart - 1;

const char* lastPartOf(const std::string& name) {
  return name.c_str() + name.rfind('/') + 1;  // npos + 1 is 0
}

int openDirectory(int at, const char* name) {
  return ::openat(at, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

bool isSameFile(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Sets errno to ENOENT when the directory has lost its name.
bool hasName(int directory, const std::string& name) {
  struct stat open {};
  struct stat named {};
  if (::fstat(directory, &open) == 0 && ::lstat(name.c_str(), &named) == 0 &&
      isSameFile(open, named)) {
    return true;
  }
  errno = ENOENT;
  return false;
}

/// The file has its name relative to the directory `at`, and its link under `link` in the claim.
bool removeBoth(int claim, const char* link, int at, const char* name) noexcept {
  struct stat linked {};
  struct stat named {};
  if (::fstatat(claim, link, &linked, AT_SYMLINK_NOFOLLOW) != 0) {
    return false;
  }
  const bool isThere =
      ::fstatat(at, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && isSameFile(linked, named);
  if (isThere && ::unlinkat(at, name, 0) != 0) {
    return false;
  }
  ::unlinkat(claim, link, 0);
  return true;
}

bool isColumnName(const char* name) { return name[std::strspn(name, "0123456789abcdef")] == '\0'; }

bool lockIfAbandoned(int claim) {
  struct stat state {};
  return ::fstat(claim, &state) == 0 && state.st_uid == ::geteuid() &&
         ::flock(claim, LOCK_EX | LOCK_NB) == 0;
}

void removeIfAbandoned(int at, const char* name) noexcept {
  const int claim = openDirectory(at, name);
  if (claim < 0) {
    return;
  }
  DIR* const links = lockIfAbandoned(claim) ? ::fdopendir(claim) : nullptr;
  if (links == nullptr) {
    ::close(claim);
    return;
  }
  while (const dirent* link = ::readdir(links)) {
    if (isColumnName(link->d_name)) {
      removeBoth(claim, link->d_name, at, link->d_name);
    }
  }
  ::unlinkat(at, name, AT_REMOVEDIR);  // still locked: its owner may be about to lock it
  ::closedir(links);
}

}  // namespace

bool makeClaimDirectory(const std::string& prefix, FileClaim& claim) {
  for (;;) {
    std::string name = prefix + kClaimPrefix + kRandomPart;
    if (::mkdtemp(name.data()) == nullptr) {
      return false;
    }
    const int directory = openDirectory(AT_FDCWD, name.c_str());
    if (directory >= 0 && ::flock(directory, LOCK_EX | LOCK_NB) == 0 && hasName(directory, name)) {
      claim.handle = directory;
      claim.name = std::move(name);
      return true;
    }
    // Before it was locked, somebody may have taken it for abandoned.
    const bool isLost = errno == ENOENT || errno == EWOULDBLOCK;
    if (directory >= 0) {
      ::close(directory);
    }
    if (!isLost) {
      ::rmdir(name.c_str());
      return false;
    }
  }
}

CreateResult createInClaim(const FileClaim& claim, const std::string& name, FileHandle& file) {
  const int directory = static_cast<int>(claim.handle);
  const char* const link = lastPartOf(name);
  const int descriptor =
      ::openat(directory, link, O_WRONLY | O_APPEND | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
               S_IRUSR | S_IWUSR);
  if (descriptor < 0) {
    return CreateResult::Failed;
  }
  if (::linkat(directory, link, AT_FDCWD, name.c_str(), 0) == 0) {
    file = descriptor;
    return CreateResult::Created;
  }
  const bool isTaken = errno == EEXIST;
  ::unlinkat(directory, link, 0);
  ::close(descriptor);
  return isTaken ? CreateResult::NameTaken : CreateResult::Failed;
}

bool removeFromClaim(const FileClaim& claim, const std::string& name) noexcept {
  return removeBoth(static_cast<int>(claim.handle), lastPartOf(name), AT_FDCWD, name.c_str());
}

void dropClaimDirectory(FileClaim& claim, bool isOwner) noexcept {
  if (isOwner) {
    ::rmdir(claim.name.c_str());
  }
  ::close(static_cast<int>(claim.handle));
  claim.handle = kNoFile;
  claim.name.clear();
}

void removeAbandonedClaims(const std::string& prefix) noexcept {
  DIR* const directory = ::opendir(prefix.empty() ? "." : prefix.c_str());
  if (directory == nullptr) {
    return;
  }
  while (const dirent* entry = ::readdir(directory)) {
    if (std::strncmp(entry->d_name, kClaimPrefix, kPrefixLength) == 0 &&
        std::strlen(entry->d_name) == kClaimLength) {
      removeIfAbandoned(::dirfd(directory), entry->d_name);
    }
  }
  ::closedir(directory);
}

}  // namespace MCBinning
