#include "toolkit/system/files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstring>
#include <random>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/system/paths.h"
#include "toolkit/system/temporary_directory.h"
#include "toolkit/system/waiting.h"
#include "toolkit/system/windows/last_error.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr unsigned kCopySize = 1U << 17U;

[[noreturn]] void fail(const std::string& action, const std::string& path) {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot {} {}: {}", action, visibleText(path), reason));
}

/// The handle is the descriptor's from then on.
int descriptorOf(HANDLE handle, int flags) {
  if (handle == INVALID_HANDLE_VALUE) {
    setErrnoFromLastError();
    return -1;
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), flags | _O_BINARY);
  if (descriptor < 0) CloseHandle(handle);
  return descriptor;
}

/// A file that goes with its last handle.
int makeUnnamedFile() {
  const std::string root = temporaryRoot();
  std::random_device dice;
  const std::string path = fmt::format("{}/mcbin-{:08x}{:08x}", root, dice(), dice());
  const int descriptor =
      descriptorOf(CreateFileW(pathOf(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                               FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr),
                   _O_RDWR);
  if (descriptor < 0) fail("make a temporary file in", root);
  return descriptor;
}

/// Bytes read, 0 at the end.
int readSome(int descriptor, std::vector<char>& buffer, const std::string& path, Monitor& monitor) {
  waitToRead(descriptor, monitor);
  const int count = _read(descriptor, buffer.data(), kCopySize);
  // A pipe whose writer has gone is at its end.
  if (count < 0 && errno != EPIPE) fail("read", path);
  return count < 0 ? 0 : count;
}

int spool(int source, const std::string& path, Monitor& monitor) {
  const int copy = makeUnnamedFile();
  try {
    std::vector<char> buffer(kCopySize);
    while (const int count = readSome(source, buffer, path, monitor)) {
      if (_write(copy, buffer.data(), static_cast<unsigned>(count)) != count) {
        fail("write a temporary file in", temporaryRoot());
      }
    }
  } catch (...) {
    _close(copy);
    throw;
  }
  _lseeki64(copy, 0, SEEK_SET);
  return copy;
}

/// Others may go on writing, renaming and deleting the file.
int openShared(const std::string& path) {
  return descriptorOf(CreateFileW(pathOf(path).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr),
                      _O_RDONLY);
}

bool isDirectory(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(pathOf(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

OpenedFile openForReading(const std::string& path, Monitor& monitor) {
  const bool isStandardInput = path == "-";
  if (!isStandardInput && isDirectory(path)) {
    throw DataError(fmt::format("cannot open {}: it is a directory", visibleText(path)));
  }
  const int descriptor = isStandardInput ? _dup(0) : openShared(path);
  const std::string name = isStandardInput ? "standard input" : path;
  if (descriptor < 0) fail("open", name);
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
  if (!isStandardInput && GetFileType(handle) == FILE_TYPE_DISK) return {descriptor, false};
  try {
    const int copy = spool(descriptor, name, monitor);
    _close(descriptor);
    return {copy, true};
  } catch (...) {
    _close(descriptor);
    throw;
  }
}

int duplicateDescriptor(int descriptor) { return _dup(descriptor); }

void closeDescriptor(int descriptor) { _close(descriptor); }

std::uint64_t fileSize(int descriptor) {
  const auto size = _filelengthi64(descriptor);
  return size < 0 ? 0 : static_cast<std::uint64_t>(size);
}

std::vector<std::string> namesIn(const std::string& directory, std::error_code& failure) {
  failure.clear();
  std::vector<std::string> names;
  WIN32_FIND_DATAW entry = {};
  const HANDLE search = FindFirstFileW(pathOf(directory + "/*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    failure.assign(static_cast<int>(GetLastError()), std::system_category());
    return names;
  }
  do {
    names.push_back(bytesOf(entry.cFileName));
  } while (FindNextFileW(search, &entry) != 0);
  FindClose(search);
  std::erase_if(names, [](const std::string& name) { return name == "." || name == ".."; });
  return names;
}

}  // namespace mcbin
