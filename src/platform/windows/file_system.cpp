#include "platform/file_system.h"

#include <windows.h>

#include <algorithm>

#include "platform/file_claim.h"
#include "platform/windows/path.h"

namespace MCBinning {
namespace {

constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

HANDLE handleOf(FileHandle file) { return reinterpret_cast<HANDLE>(file); }

bool open(const std::string& name, DWORD access, DWORD disposition, FileHandle& file) {
  // No security attributes: the handle is not inherited by child programs.
  const HANDLE handle =
      CreateFileW(Path(name.c_str()).Text(), access, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                  disposition, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return false;
  }
  file = reinterpret_cast<FileHandle>(handle);
  return true;
}

bool openRegular(const std::string& name, DWORD access, FileHandle& file) {
  FileHandle opened = kNoFile;
  if (!open(name, access, OPEN_EXISTING, opened)) {
    return false;
  }
  if (GetFileType(handleOf(opened)) != FILE_TYPE_DISK) {
    CloseHandle(handleOf(opened));
    return false;
  }
  file = opened;
  return true;
}

class WindowsFileSystem final : public FileSystem {
 public:
  NameState Probe(const std::string& name) override {
    FileHandle file = kNoFile;
    if (open(name, GENERIC_READ, OPEN_EXISTING, file)) {
      CloseHandle(handleOf(file));
      return NameState::Taken;
    }
    switch (GetLastError()) {
      case ERROR_PATH_NOT_FOUND:
        return NameState::NoDirectory;
      case ERROR_TOO_MANY_OPEN_FILES:
        return NameState::TooManyOpenFiles;
      case ERROR_ACCESS_DENIED:
      case ERROR_SHARING_VIOLATION:
        return GetFileAttributesW(Path(name.c_str()).Text()) == INVALID_FILE_ATTRIBUTES
                   ? NameState::DirectoryRefused
                   : NameState::Taken;
      default:
        return NameState::Free;
    }
  }

  bool MakeClaim(const std::string& prefix, FileClaim& claim) override {
    return makeClaimDirectory(prefix, claim);
  }

  void DropClaim(FileClaim& claim, bool isOwner) noexcept override {
    dropClaimDirectory(claim, isOwner);
  }

  void RemoveAbandoned(const std::string& prefix) noexcept override {
    removeAbandonedClaims(prefix);
  }

  CreateResult Create(const std::string& name, const FileClaim& claim, FileHandle& file) override {
    if (claim.handle != kNoFile) {
      const CreateResult result = createInClaim(claim, name, file);
      if (result != CreateResult::Failed) {
        return result;
      }
    }
    if (open(name, FILE_APPEND_DATA, CREATE_NEW, file)) {
      return CreateResult::Created;
    }
    return GetLastError() == ERROR_FILE_EXISTS ? CreateResult::NameTaken : CreateResult::Failed;
  }

  bool OpenForAppend(const std::string& name, FileHandle& file) override {
    return openRegular(name, FILE_APPEND_DATA, file);
  }

  bool OpenForReading(const std::string& name, FileHandle& file) override {
    return openRegular(name, GENERIC_READ, file);
  }

  bool Write(FileHandle file, const void* bytes, std::size_t size) override {
    const char* next = static_cast<const char*>(bytes);
    while (size > 0) {
      const auto part = static_cast<DWORD>(std::min(size, kLargestTransfer));
      DWORD written = 0;
      if (!WriteFile(handleOf(file), next, part, &written, nullptr) || written == 0) {
        return false;
      }
      next += written;
      size -= written;
    }
    return true;
  }

  bool Read(FileHandle file, void* bytes, std::size_t size, std::size_t& bytesRead) override {
    char* next = static_cast<char*>(bytes);
    bytesRead = 0;
    while (bytesRead < size) {
      const auto part = static_cast<DWORD>(std::min(size - bytesRead, kLargestTransfer));
      DWORD got = 0;
      if (!ReadFile(handleOf(file), next + bytesRead, part, &got, nullptr)) {
        return false;
      }
      if (got == 0) {
        return true;
      }
      bytesRead += got;
    }
    return true;
  }

  bool SeekToStart(FileHandle file) override {
    return SetFilePointerEx(handleOf(file), LARGE_INTEGER{}, nullptr, FILE_BEGIN) != 0;
  }

  bool Close(FileHandle file) noexcept override { return CloseHandle(handleOf(file)) != 0; }

  bool Remove(const std::string& name, const FileClaim& claim) noexcept override {
    const Path path(name.c_str());
    if ((claim.handle != kNoFile && removeFromClaim(claim, name)) ||
        DeleteFileW(path.Text()) != 0 || GetLastError() == ERROR_FILE_NOT_FOUND) {
      return true;
    }
    // Somebody may have made it read-only meanwhile, which no directory on POSIX systems minds.
    return GetLastError() == ERROR_ACCESS_DENIED &&
           SetFileAttributesW(path.Text(), FILE_ATTRIBUTE_NORMAL) != 0 &&
           DeleteFileW(path.Text()) != 0;
  }
};

}  // namespace

FileSystem& realFileSystem() {
  static constinit WindowsFileSystem files;
  return files;
}

}  // namespace MCBinning
