#include "toolkit/system/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/system/temporary_directory.h"
#include "toolkit/system/waiting.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kCopySize = std::size_t{1} << 17U;

[[noreturn]] void fail(const std::string& action, const std::string& path) {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot {} {}: {}", action, visibleText(path), reason));
}

int makeUnnamedFile() {
  const std::string root = temporaryRoot();
#ifdef O_TMPFILE
  const int unnamed = ::open(root.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (unnamed >= 0) return unnamed;
#endif
  std::string path = root + "/mcbin-XXXXXX";
  const int descriptor = ::mkstemp(path.data());
  if (descriptor < 0) fail("make a temporary file in", root);
  ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  ::unlink(path.c_str());
  return descriptor;
}

/// Bytes read, 0 at the end.
std::size_t readSome(int descriptor, std::vector<char>& buffer, const std::string& path,
                     Monitor& monitor) {
  while (true) {
    waitToRead(descriptor, monitor);
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR && errno != EAGAIN) fail("read", path);
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

OpenedFile openForReading(const std::string& path, Monitor& monitor) {
  const bool isStandardInput = path == "-";
  // A pipe without a writer is opened all the same, and waited for where a stop is heard.
  const int descriptor = isStandardInput ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                         : ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) fail("open", isStandardInput ? "standard input" : path);
  struct stat status = {};
  if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(descriptor);
    throw DataError(fmt::format("cannot open {}: it is a directory", visibleText(path)));
  }
  if (!isStandardInput && S_ISREG(status.st_mode)) return {descriptor, false};
  try {
    const int copy = spool(descriptor, isStandardInput ? "standard input" : path, monitor);
    ::close(descriptor);
    return {copy, true};
  } catch (...) {
    ::close(descriptor);
    throw;
  }
}

int duplicateDescriptor(int descriptor) { return ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0); }

void closeDescriptor(int descriptor) { ::close(descriptor); }

std::uint64_t fileSize(int descriptor) {
  struct stat status = {};
  return ::fstat(descriptor, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::vector<std::string> namesIn(const std::string& directory, std::error_code& failure) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(directory.c_str()), ::closedir);
  while (opened != nullptr) {
    errno = 0;
    const dirent* const entry = ::readdir(opened.get());
    if (entry == nullptr) break;
    names.emplace_back(entry->d_name);
  }
  failure.assign(errno, std::generic_category());
  return names;
}

}  // namespace mcbin
