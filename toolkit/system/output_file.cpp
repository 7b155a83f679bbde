#include "toolkit/system/output_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// What a path that may be a symbolic link leads to, whether it is there or not.
std::string behindLinks(std::string path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) return path;
    path = (std::filesystem::path(path).parent_path() / target).string();
  }
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path), std::strerror(ELOOP)));
}

/// Makes a file that replaces another as public as that one, and its owner's where it may.
void takeOver(const struct stat& replaced, std::FILE* file) {
  const int descriptor = ::fileno(file);
  if (::fchown(descriptor, replaced.st_uid, replaced.st_gid) != 0) {
    // Only the superuser gives files away; the group may still be ours.
    static_cast<void>(::fchown(descriptor, static_cast<uid_t>(-1), replaced.st_gid) == 0);
  }
  static_cast<void>(::fchmod(descriptor, replaced.st_mode & 0777U) == 0);
}

/// Makes a file of a random name beside `target` and sets `path` to it; null with errno on failure.
std::FILE* makeBeside(const std::string& target, std::string& path) {
  std::random_device dice;
  int descriptor = -1;
  do {
    path = fmt::format("{}.{:08x}{:08x}.tmp", target, dice(), dice());
    descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  } while (descriptor < 0 && (errno == EEXIST || errno == EINTR));
  if (descriptor < 0) return nullptr;
  std::FILE* const file = ::fdopen(descriptor, "wb");
  if (file == nullptr) {
    const int reason = errno;
    ::close(descriptor);
    ::unlink(path.c_str());
    errno = reason;
  }
  return file;
}

}  // namespace

OutputFile::OutputFile(const std::string& path)
    : path_(path), file_(nullptr), process_(::getpid()) {
  if (path == "-") {
    path_ = "standard output";
    file_ = stdout;
    return;
  }
  target_ = behindLinks(path);
  struct stat older = {};
  const bool isThere = ::stat(path.c_str(), &older) == 0;
  if (isThere && !S_ISREG(older.st_mode)) {
    file_ = std::fopen(path.c_str(), "wb");
  } else {
    file_ = makeBeside(target_, temporaryPath_);
    if (file_ != nullptr && isThere) takeOver(older, file_);
  }
  if (file_ == nullptr) {
    temporaryPath_.clear();
    Fail();
  }
}

OutputFile::~OutputFile() {
  if (process_ != ::getpid()) return;  // what a forked child holds is not its own
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  if (!temporaryPath_.empty()) ::unlink(temporaryPath_.c_str());
}

void OutputFile::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) Fail();
}

void OutputFile::Commit() {
  if (std::fflush(file_) != 0) Fail();
  if (file_ == stdout) return;
  std::FILE* const file = file_;
  file_ = nullptr;
  if (std::fclose(file) != 0) Fail();
  if (temporaryPath_.empty()) return;
  if (std::rename(temporaryPath_.c_str(), target_.c_str()) != 0) Fail();
  temporaryPath_.clear();
}

void OutputFile::Fail() const {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path_), reason));
}

void requireOtherFile(const std::string& output, const std::string& input, const char* content) {
  std::error_code notThere;
  if (output != "-" && input != "-" && std::filesystem::is_regular_file(output, notThere) &&
      std::filesystem::equivalent(output, input, notThere)) {
    throw UsageError(
        fmt::format("--output {} is the file of {}: name another", visibleText(output), content));
  }
}

void writeStandardOutput(std::string_view text) {
  OutputFile output("-");
  output.Write(text);
  output.Commit();
}

}  // namespace mcbin
