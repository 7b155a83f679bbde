#include "toolkit/system/output_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/system/paths.h"
#include "toolkit/system/replacement.h"
#include "toolkit/system/waiting.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16U;
constexpr std::size_t kMostAtOnce = 4096;  // what a pipe that takes anything takes at once

/// Of the OutputFile under way; what runs at the end of a process without memory has no arguments.
thread_local const std::filesystem::path* unfinishedPath = nullptr;

/// What a path that may be a symbolic link leads to, whether it is there or not.
std::string behindLinks(std::string path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    const std::filesystem::path target = std::filesystem::read_symlink(pathOf(path), error);
    if (error) return path;
    path = bytesOf(pathOf(path).parent_path() / target);
  }
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path), std::strerror(ELOOP)));
}

}  // namespace

OutputFile::OutputFile(const std::string& path, Monitor& monitor)
    : monitor_(monitor), path_(path), descriptor_(STDOUT_FILENO), process_(::getpid()) {
  if (path == "-") {
    path_ = "standard output";
    return;
  }
  target_ = behindLinks(path);
  descriptor_ = isNoRegularFile(path) ? openDirectly(path, monitor)
                                      : makeReplacement(target_, temporaryPath_);
  if (descriptor_ < 0) {
    temporaryPath_.clear();
    Fail();
  }
  if (!temporaryPath_.empty()) unfinishedPath = &temporaryPath_;
}

OutputFile::~OutputFile() {
  if (unfinishedPath == &temporaryPath_) unfinishedPath = nullptr;
  if (process_ != ::getpid()) return;  // what a forked child holds is not its own
  if (descriptor_ >= 0 && !target_.empty()) ::close(descriptor_);
  if (!temporaryPath_.empty()) removeReplacement(temporaryPath_);
}

void OutputFile::Write(std::string_view text) {
  unwritten_ += text;
  if (unwritten_.size() >= kBufferSize) Flush();
}

/// Never blocks in a write, which is deaf to a signal that came just before.
void OutputFile::Flush() {
  std::string_view left = unwritten_;
  while (!left.empty()) {
    waitToWrite(descriptor_, monitor_);
    const auto size = static_cast<unsigned>(std::min(left.size(), kMostAtOnce));
    const auto count = ::write(descriptor_, left.data(), size);
    if (count < 0 && errno != EINTR && errno != EAGAIN) Fail();
    if (count > 0) left.remove_prefix(static_cast<std::size_t>(count));
  }
  unwritten_.clear();
}

void OutputFile::Commit() {
  Flush();
  if (target_.empty()) return;
  if (::close(std::exchange(descriptor_, -1)) != 0) Fail();
  if (temporaryPath_.empty()) return;
  if (!putInPlace(temporaryPath_, target_)) Fail();
  temporaryPath_.clear();
}

void OutputFile::Fail() const {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path_), reason));
}

void removeUnfinishedOutput() noexcept {
  if (unfinishedPath != nullptr && !unfinishedPath->empty()) removeReplacement(*unfinishedPath);
}

void requireOtherFile(const std::string& output, const std::string& input, const char* content) {
  std::error_code notThere;
  if (output != "-" && input != "-" && std::filesystem::is_regular_file(pathOf(output), notThere) &&
      std::filesystem::equivalent(pathOf(output), pathOf(input), notThere)) {
    throw UsageError(
        fmt::format("--output {} is the file of {}: name another", visibleText(output), content));
  }
}

void writeStandardOutput(std::string_view text, Monitor& monitor) {
  OutputFile output("-", monitor);
  output.Write(text);
  output.Commit();
}

}  // namespace mcbin
