/// Files by descriptor.
#ifndef MCBIN_TOOLKIT_SYSTEM_FILES_H
#define MCBIN_TOOLKIT_SYSTEM_FILES_H

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

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

/// The names of what is in a directory, in no order. `failure` says why it cannot be read to its
/// end; no memory is std::bad_alloc, which the standard library's own way may not let through.
std::vector<std::string> namesIn(const std::string& directory, std::error_code& failure);

}  // namespace mcbin

#endif
