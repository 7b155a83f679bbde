#include "toolkit/system/files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kCopySize = std::size_t{1} << 17U;

[[noreturn]] void fail(const std::string& action, const std::string& path) {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot {} {}: {}", action, visibleText(path), reason));
}

int makeUnnamedFile() {
  std::string path = temporaryRoot() + "/mcbin-XXXXXX";
  const int descriptor = ::mkstemp(path.data());
  if (descriptor < 0) fail("make a temporary file in", temporaryRoot());
  ::unlink(path.c_str());
  return descriptor;
}

/// Bytes read, 0 at the end. A signal that only interrupts the wait is looked at and waited on.
std::size_t readSome(int descriptor, std::vector<char>& buffer, const std::string& path,
                     Monitor& monitor) {
  while (true) {
    monitor.ThrowIfStopped();
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) fail("read", path);
  }
}

void writeAll(int descriptor, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t count = ::write(descriptor, bytes, size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail("write a temporary file in", temporaryRoot());
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
}

int spool(int source, const std::string& path, Monitor& monitor) {
  const int copy = makeUnnamedFile();
  try {
    std::vector<char> buffer(kCopySize);
    while (const std::size_t count = readSome(source, buffer, path, monitor)) {
      writeAll(copy, buffer.data(), count);
    }
  } catch (...) {
    ::close(copy);
    throw;
  }
  ::lseek(copy, 0, SEEK_SET);
  return copy;
}

}  // namespace

int openForReading(const std::string& path, Monitor& monitor) {
  const bool isStandardInput = path == "-";
  const int descriptor =
      isStandardInput ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) fail("open", isStandardInput ? "standard input" : path);
  struct stat status = {};
  if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(descriptor);
    throw DataError(fmt::format("cannot open {}: it is a directory", visibleText(path)));
  }
  if (!isStandardInput && S_ISREG(status.st_mode)) return descriptor;
  try {
    const int copy = spool(descriptor, isStandardInput ? "standard input" : path, monitor);
    ::close(descriptor);
    return copy;
  } catch (...) {
    ::close(descriptor);
    throw;
  }
}

int duplicateDescriptor(int descriptor) { return ::dup(descriptor); }

void closeDescriptor(int descriptor) { ::close(descriptor); }

std::uint64_t fileSize(int descriptor) {
  struct stat status = {};
  return ::fstat(descriptor, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::string temporaryRoot() {
  const char* const directory = std::getenv("TMPDIR");
  return directory != nullptr && *directory != '\0' ? directory : "/tmp";
}

TemporaryDirectory::TemporaryDirectory(const std::string& root) : path_(root + "/mcbin-XXXXXX") {
  if (::mkdtemp(path_.data()) == nullptr) fail("make a temporary directory in", root);
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace mcbin
