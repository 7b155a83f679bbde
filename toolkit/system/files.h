/// Files by descriptor.
#ifndef MCBIN_TOOLKIT_SYSTEM_FILES_H
#define MCBIN_TOOLKIT_SYSTEM_FILES_H

#include <cstdint>
#include <string>

#include "toolkit/monitor.h"

namespace mcbin {

struct OpenedFile {
  int descriptor;
  bool isCopy;  ///< Of what is no regular file.
};

/// Opens `path` ("-": standard input) for reading from its start and as often as wanted: what is
/// no regular file is copied to an unnamed temporary file first. The caller closes the descriptor.
/// DataError when it cannot be opened or is a directory. The monitor is asked while a pipe is
/// waited for and copied.
OpenedFile openForReading(const std::string& path, Monitor& monitor);

/// Another descriptor of the same file, -1 with errno when there is none.
int duplicateDescriptor(int descriptor);
void closeDescriptor(int descriptor);
std::uint64_t fileSize(int descriptor);

}  // namespace mcbin

#endif
