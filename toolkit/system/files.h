/// Files by descriptor, and temporary files that leave nothing behind.
#ifndef MCBIN_TOOLKIT_SYSTEM_FILES_H
#define MCBIN_TOOLKIT_SYSTEM_FILES_H

#include <cstdint>
#include <string>

#include "toolkit/monitor.h"

namespace mcbin {

/// Opens `path` ("-": standard input) for reading from its start and as often as wanted: what is
/// no regular file is copied to an unnamed temporary file first. The caller closes the descriptor.
/// DataError when it cannot be opened or is a directory. The monitor is asked during the copy.
int openForReading(const std::string& path, Monitor& monitor);
int duplicateDescriptor(int descriptor);
void closeDescriptor(int descriptor);
std::uint64_t fileSize(int descriptor);

/// Where temporary files go: TMPDIR when it is set and not empty, else /tmp.
std::string temporaryRoot();

/// A new directory in `root` that goes away, with the files in it, when the object does.
class TemporaryDirectory {
 public:
  /// DataError when the directory cannot be made.
  explicit TemporaryDirectory(const std::string& root);
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace mcbin

#endif
