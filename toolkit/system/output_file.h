/// A file that appears under its name only when it is complete.
#ifndef MCBIN_TOOLKIT_SYSTEM_OUTPUT_FILE_H
#define MCBIN_TOOLKIT_SYSTEM_OUTPUT_FILE_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "toolkit/monitor.h"

namespace mcbin {

/// Writes to a new file beside `path` and renames it on Commit; without a Commit the file goes
/// away with the object and an older file of the name stays. What replaces an older file gets its
/// mode and, where that is allowed, its owner; a symbolic link stays and its target is replaced.
/// The new file's name is random and taken exclusively, so that nothing left or planted is in the
/// way; only the process that made it removes it. The path "-" writes to standard output, and a
/// path that is there but is no regular file (/dev/null, a pipe) is written directly. Every failure
/// is a DataError that names the path.
class OutputFile {
 public:
  /// The monitor is borrowed and asked on the way, also while a pipe has no reader or is full.
  OutputFile(const std::string& path, Monitor& monitor);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  void Write(std::string_view text);
  void Commit();

 private:
  void Flush();
  [[noreturn]] void Fail() const;

  Monitor& monitor_;
  std::string path_;
  std::string target_;  ///< The path behind symbolic links; empty for standard output.
  std::filesystem::path temporaryPath_;  ///< Empty when the file is written directly.
  std::string unwritten_;
  int descriptor_;
  pid_t process_;
};

/// Removes what an OutputFile of this thread has not committed, for an end without destructors.
void removeUnfinishedOutput() noexcept;

/// UsageError when `output` is the regular file `input`, which `content` ("the data") names: what a
/// command reads is never replaced by what it writes.
void requireOtherFile(const std::string& output, const std::string& input, const char* content);

/// Writes results to standard output; DataError when they cannot be written.
void writeStandardOutput(std::string_view text, Monitor& monitor);

}  // namespace mcbin

#endif
