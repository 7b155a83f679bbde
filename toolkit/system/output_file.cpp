#include "toolkit/system/output_file.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

bool isSpecialFile(const std::string& path) {
  struct stat status = {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path), file_(nullptr) {
  if (path == "-") {
    path_ = "standard output";
    file_ = stdout;
    return;
  }
  if (isSpecialFile(path)) {
    file_ = std::fopen(path.c_str(), "wb");
  } else {
    temporaryPath_ = fmt::format("{}.{}.tmp", path, ::getpid());
    file_ = std::fopen(temporaryPath_.c_str(), "wbx");
  }
  if (file_ == nullptr) {
    temporaryPath_.clear();
    Fail();
  }
}

OutputFile::~OutputFile() {
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
  if (std::rename(temporaryPath_.c_str(), path_.c_str()) != 0) Fail();
  temporaryPath_.clear();
}

void OutputFile::Fail() const {
  const char* const reason = std::strerror(errno);
  throw DataError(fmt::format("cannot write {}: {}", visibleText(path_), reason));
}

void requireOtherFile(const std::string& output, const std::string& input, const char* content) {
  std::error_code notThere;
  if (output != "-" && std::filesystem::is_regular_file(output, notThere) &&
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
