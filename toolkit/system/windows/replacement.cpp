#include "toolkit/system/replacement.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <random>

#include "toolkit/system/windows/last_error.h"

namespace mcbin {

bool isNoRegularFile(const std::string& path) {
  const HANDLE file =
      CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool isOnDisk = GetFileType(file) == FILE_TYPE_DISK;
  CloseHandle(file);
  return !isOnDisk || (GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int openDirectly(const std::string& path, Monitor& /*monitor*/) {
  return _open(path.c_str(), _O_WRONLY | _O_BINARY);
}

int makeReplacement(const std::string& target, std::string& path) {
  std::random_device dice;
  HANDLE handle = INVALID_HANDLE_VALUE;
  do {
    path = fmt::format("{}.{:08x}{:08x}.tmp", target, dice(), dice());
    handle = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  } while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
  if (handle == INVALID_HANDLE_VALUE) {
    setErrnoFromLastError();
    return -1;
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY);
  if (descriptor < 0) {
    CloseHandle(handle);
    DeleteFileA(path.c_str());
    errno = EMFILE;
  }
  return descriptor;
}

bool putInPlace(const std::string& path, const std::string& target) {
  // A read-only file is replaced by one that is read-only, as on other systems, where the directory
  // alone decides.
  const DWORD attributes = GetFileAttributesA(target.c_str());
  const bool isReadOnly =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (isReadOnly) SetFileAttributesA(target.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
  const bool isInPlace = MoveFileExA(path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  if (!isInPlace) setErrnoFromLastError();
  if (isReadOnly) SetFileAttributesA(target.c_str(), attributes);
  return isInPlace;
}

}  // namespace mcbin
