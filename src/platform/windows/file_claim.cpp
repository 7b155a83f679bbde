#include "platform/file_claim.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

#include "platform/windows/path.h"

namespace MCBinning {
namespace {

// The lock is a file that nobody can open beside its owner and that goes with the owner's handle.
constexpr char kClaimPrefix[] = "mcbinning-columns-";
constexpr char kLockName[] = "lock";
constexpr int kAttempts = 100;

const char* lastPartOf(const std::string& name) {
  return name.c_str() + name.find_last_of("/\\") + 1;  // npos + 1 is 0
}

HANDLE openLock(const char* claim, DWORD disposition) {
  return CreateFileW(Path(claim, "\\", kLockName).Text(), GENERIC_READ | DELETE, 0, nullptr,
                     disposition, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

bool identify(const Path& path, BY_HANDLE_FILE_INFORMATION& information) {
  const HANDLE file = CreateFileW(
      path.Text(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
      OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  const bool isKnown = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return isKnown;
}

bool removeBoth(const Path& link, const Path& name) noexcept {
  BY_HANDLE_FILE_INFORMATION linked{};
  BY_HANDLE_FILE_INFORMATION named{};
  if (!identify(link, linked)) {
    return false;
  }
  const bool isThere =
      identify(name, named) && linked.dwVolumeSerialNumber == named.dwVolumeSerialNumber &&
      linked.nFileIndexHigh == named.nFileIndexHigh && linked.nFileIndexLow == named.nFileIndexLow;
  if (isThere && DeleteFileW(name.Text()) == 0) {
    return false;
  }
  DeleteFileW(link.Text());
  return true;
}

bool isColumnName(const char* name) { return name[std::strspn(name, "0123456789abcdef")] == '\0'; }

/// Calls `take` with the name of every entry that matches; ours are plain letters in any code page.
template <typename Take>
void forEachEntry(const Path& pattern, Take take) {
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW(pattern.Text(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return;
  }
  do {
    std::array<char, MAX_PATH> name{};
    if (WideCharToMultiByte(CP_UTF8, 0, entry.cFileName, -1, name.data(), MAX_PATH, nullptr,
                            nullptr) > 0) {
      take(static_cast<const char*>(name.data()));
    }
  } while (FindNextFileW(search, &entry) != 0);
  FindClose(search);
}

void removeIfAbandoned(const char* prefix, const char* claim) noexcept {
  const HANDLE lock = openLock(claim, OPEN_ALWAYS);
  if (lock == INVALID_HANDLE_VALUE) {
    return;
  }
  forEachEntry(Path(claim, "\\*"), [&](const char* link) {
    if (isColumnName(link)) {
      removeBoth(Path(claim, "\\", link), Path(prefix, link));
    }
  });
  CloseHandle(lock);
  RemoveDirectoryW(Path(claim).Text());
}

}  // namespace

bool makeClaimDirectory(const std::string& prefix, FileClaim& claim) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const unsigned long long number = (GetTickCount64() << 20) ^ GetCurrentProcessId();
    std::array<char, 20> digits{};
    std::snprintf(digits.data(), digits.size(), "%llx", number + static_cast<unsigned>(attempt));
    std::string name = prefix + kClaimPrefix + digits.data();
    if (CreateDirectoryW(Path(name.c_str()).Text(), nullptr) == 0) {
      continue;
    }
    // Before it is locked, somebody may take it for abandoned.
    const HANDLE lock = openLock(name.c_str(), CREATE_NEW);
    if (lock != INVALID_HANDLE_VALUE) {
      claim.handle = reinterpret_cast<FileHandle>(lock);
      claim.name = std::move(name);
      return true;
    }
    RemoveDirectoryW(Path(name.c_str()).Text());
  }
  return false;
}

CreateResult createInClaim(const FileClaim& claim, const std::string& name, FileHandle& file) {
  const Path link(claim.name.c_str(), "\\", lastPartOf(name));
  const HANDLE handle =
      CreateFileW(link.Text(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                  CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return CreateResult::Failed;
  }
  if (CreateHardLinkW(Path(name.c_str()).Text(), link.Text(), nullptr) != 0) {
    file = reinterpret_cast<FileHandle>(handle);
    return CreateResult::Created;
  }
  const DWORD error = GetLastError();
  CloseHandle(handle);
  DeleteFileW(link.Text());
  return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? CreateResult::NameTaken
                                                                     : CreateResult::Failed;
}

bool removeFromClaim(const FileClaim& claim, const std::string& name) noexcept {
  return removeBoth(Path(claim.name.c_str(), "\\", lastPartOf(name)), Path(name.c_str()));
}

void dropClaimDirectory(FileClaim& claim, bool isOwner) noexcept {
  CloseHandle(reinterpret_cast<HANDLE>(claim.handle));
  if (isOwner) {
    RemoveDirectoryW(Path(claim.name.c_str()).Text());
  }
  claim.handle = kNoFile;
  claim.name.clear();
}

void removeAbandonedClaims(const std::string& prefix) noexcept {
  forEachEntry(Path(prefix.c_str(), kClaimPrefix, "*"), [&](const char* entry) {
    std::array<char, Path::kLongest> claim{};
    std::snprintf(claim.data(), claim.size(), "%s%s", prefix.c_str(), entry);
    removeIfAbandoned(prefix.c_str(), claim.data());
  });
}

}  // namespace MCBinning
