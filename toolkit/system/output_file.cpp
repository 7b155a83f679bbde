#include "toolkit/system/output_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "toolkit/errors.h"
#include "toolkit/system/paths.h"
#include "toolkit/system/replacement.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// Of the OutputFile under way; what runs at the end of a process without memory has no arguments.
thread_local const std::string* unfinishedPath = nullptr;

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

OutputFile::OutputFile(const std::string& path)
    : path_(path), file_(nullptr), process_(::getpid()) {
  if (path == "-") {
    path_ = "standard output";
    file_ = stdout;
    return;
  }
  target_ = behindLinks(path);
  file_ = isNoRegularFile(path) ? std::fopen(path.c_str(), "wb")
                                : makeReplacement(target_, temporaryPath_);
  if (file_ == nullptr) {
    temporaryPath_.clear();
    Fail();
  }
  if (!temporaryPath_.empty()) unfinishedPath = &temporaryPath_;
}

OutputFile::~OutputFile() {
  if (unfinishedPath == &temporaryPath_) unfinishedPath = nullptr;
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
  if (!putInPlace(temporaryPath_, target_)) Fail();
  temporaryPath_.clear();
}

void OutputFile::Fail() const {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path_), reason));
}

void removeUnfinishedOutput() noexcept {
  if (unfinishedPath != nullptr && !unfinishedPath->empty()) ::unlink(unfinishedPath->c_str());
}

void requireOtherFile(const std::string& output, const std::string& input, const char* content) {
  std::error_code notThere;
  if (output != "-" && input != "-" && std::filesystem::is_regular_file(pathOf(output), notThere) &&
      std::filesystem::equivalent(pathOf(output), pathOf(input), notThere)) {
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
