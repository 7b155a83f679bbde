#include "toolkit/system/replacement.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <random>

#include "toolkit/system/paths.h"
#include "toolkit/system/windows/last_error.h"

namespace mcbin {

bool isNoRegularFile(const std::string& name) {
  const std::filesystem::path path = pathOf(name);
  const HANDLE file =
      CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool isOnDisk = GetFileType(file) == FILE_TYPE_DISK;
  CloseHandle(file);
  return !isOnDisk || (GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int openDirectly(const std::string& path, Monitor& /*monitor*/) {
  return _wopen(pathOf(path).c_str(), _O_WRONLY | _O_BINARY);
}

int makeReplacement(const std::string& target, std::filesystem::path& path) {
  std::random_device dice;
  HANDLE handle = INVALID_HANDLE_VALUE;
  do {
    path = pathOf(fmt::format("{}.{:08x}{:08x}.tmp", target, dice(), dice()));
    handle = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  } while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
  if (handle == INVALID_HANDLE_VALUE) {
    setErrnoFromLastError();
    return -1;
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY);
  if (descriptor < 0) {
    CloseHandle(handle);
    removeReplacement(path);
    errno = EMFILE;
  }
  return descriptor;
}

bool putInPlace(const std::filesystem::path& path, const std::string& targetName) {
  const std::filesystem::path target = pathOf(targetName);
  // A read-only file is replaced by one that is read-only, as on other systems, where the directory
  // alone decides.
  const DWORD attributes = GetFileAttributesW(target.c_str());
  const bool isReadOnly =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (isReadOnly) SetFileAttributesW(target.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  const bool isInPlace = MoveFileExW(path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  if (!isInPlace) setErrnoFromLastError();
  if (isReadOnly) SetFileAttributesW(target.c_str(), attributes);
  return isInPlace;
}

void removeReplacement(const std::filesystem::path& path) noexcept { DeleteFileW(path.c_str()); }

}  // namespace mcbin
