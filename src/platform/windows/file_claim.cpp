#include "platform/file_claim.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

namespace MCBinning {
namespace {

// The lock is a file that nobody can open beside its owner and that goes with the owner's handle.
constexpr char kClaimPrefix[] = "mcbinning-columns-";
constexpr char kLockName[] = "lock";
constexpr int kAttempts = 100;

/// A path that needs no memory of the heap; empty when it is too long for the system.
class Path {
 public:
  Path(const char* directory, const char* name, const char* rest = "") {
    const int length = std::snprintf(text_.data(), text_.size(), "%s%s%s", directory, name, rest);
    if (length < 0 || static_cast<std::size_t>(length) >= text_.size()) {
      text_[0] = '\0';
    }
  }

  const char* Text() const { return text_.data(); }

 private:
  std::array<char, MAX_PATH> text_{};
};

const char* lastPartOf(const std::string& name) {
  return name.c_str() + name.find_last_of("/\\") + 1;  // npos + 1 is 0
}

HANDLE openLock(const char* claim, DWORD disposition) {
  return CreateFileA(Path(claim, "\\", kLockName).Text(), GENERIC_READ | DELETE, 0, nullptr,
                     disposition, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

bool identify(const char* path, BY_HANDLE_FILE_INFORMATION& information) {
  const HANDLE file = CreateFileA(
      path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
      FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  const bool isKnown = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return isKnown;
}

bool removeBoth(const char* link, const char* name) noexcept {
  BY_HANDLE_FILE_INFORMATION linked{};
  BY_HANDLE_FILE_INFORMATION named{};
  if (!identify(link, linked)) {
    return false;
  }
  const bool isThere =
      identify(name, named) && linked.dwVolumeSerialNumber == named.dwVolumeSerialNumber &&
      linked.nFileIndexHigh == named.nFileIndexHigh && linked.nFileIndexLow == named.nFileIndexLow;
  if (isThere && DeleteFileA(name) == 0) {
    return false;
  }
  DeleteFileA(link);
  return true;
}

bool isColumnName(const char* name) { return name[std::strspn(name, "0123456789abcdef")] == '\0'; }

/// Calls `take` with the name of every entry that matches.
template <typename Take>
void forEachEntry(const char* pattern, Take take) {
  WIN32_FIND_DATAA entry{};
  const HANDLE search = FindFirstFileA(pattern, &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return;
  }
  do {
    take(static_cast<const char*>(entry.cFileName));
  } while (FindNextFileA(search, &entry) != 0);
  FindClose(search);
}

void removeIfAbandoned(const char* prefix, const char* claim) noexcept {
  const HANDLE lock = openLock(claim, OPEN_ALWAYS);
  if (lock == INVALID_HANDLE_VALUE) {
    return;
  }
  forEachEntry(Path(claim, "\\*").Text(), [&](const char* link) {
    if (isColumnName(link)) {
      removeBoth(Path(claim, "\\", link).Text(), Path(prefix, link).Text());
    }
  });
  CloseHandle(lock);
  RemoveDirectoryA(claim);
}

}  // namespace

bool makeClaimDirectory(const std::string& prefix, FileClaim& claim) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const unsigned long long number = (GetTickCount64() << 20) ^ GetCurrentProcessId();
    std::array<char, 20> digits{};
    std::snprintf(digits.data(), digits.size(), "%llx", number + static_cast<unsigned>(attempt));
    std::string name = prefix + kClaimPrefix + digits.data();
    if (CreateDirectoryA(name.c_str(), nullptr) == 0) {
      continue;
    }
    // Before it is locked, somebody may take it for abandoned.
    const HANDLE lock = openLock(name.c_str(), CREATE_NEW);
    if (lock != INVALID_HANDLE_VALUE) {
      claim.handle = reinterpret_cast<FileHandle>(lock);
      claim.name = std::move(name);
      return true;
    }
    RemoveDirectoryA(name.c_str());
  }
  return false;
}

CreateResult createInClaim(const FileClaim& claim, const std::string& name, FileHandle& file) {
  const Path link(claim.name.c_str(), "\\", lastPartOf(name));
  const HANDLE handle =
      CreateFileA(link.Text(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                  CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return CreateResult::Failed;
  }
  if (CreateHardLinkA(name.c_str(), link.Text(), nullptr) != 0) {
    file = reinterpret_cast<FileHandle>(handle);
    return CreateResult::Created;
  }
  const DWORD error = GetLastError();
  CloseHandle(handle);
  DeleteFileA(link.Text());
  return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? CreateResult::NameTaken
                                                                     : CreateResult::Failed;
}

bool removeFromClaim(const FileClaim& claim, const std::string& name) noexcept {
  return removeBoth(Path(claim.name.c_str(), "\\", lastPartOf(name)).Text(), name.c_str());
}

void dropClaimDirectory(FileClaim& claim, bool isOwner) noexcept {
  CloseHandle(reinterpret_cast<HANDLE>(claim.handle));
  if (isOwner) {
    RemoveDirectoryA(claim.name.c_str());
  }
  claim.handle = kNoFile;
  claim.name.clear();
}

void removeAbandonedClaims(const std::string& prefix) noexcept {
  forEachEntry(Path(prefix.c_str(), kClaimPrefix, "*").Text(), [&](const char* entry) {
    removeIfAbandoned(prefix.c_str(), Path(prefix.c_str(), entry).Text());
  });
}

}  // namespace MCBinning
