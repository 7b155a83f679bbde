/// How a file is written to directly or replaced by another, in the operating system's ways.
#ifndef MCBIN_TOOLKIT_SYSTEM_REPLACEMENT_H
#define MCBIN_TOOLKIT_SYSTEM_REPLACEMENT_H

#include <filesystem>
#include <string>

#include "toolkit/monitor.h"

namespace mcbin {

/// Whether something has the path that is no regular file: a device, a pipe, a directory.
bool isNoRegularFile(const std::string& path);

/// Opens for writing what is no regular file, a pipe once it has a reader; the monitor is asked
/// until then. -1 with errno on failure.
int openDirectly(const std::string& path, Monitor& monitor);

/// Makes a file of a random name beside `target` and sets `path` to it. Where `target` is there,
/// the new file is as public as that one and, where that is allowed, its owner's. -1 with errno
/// on failure.
int makeReplacement(const std::string& target, std::filesystem::path& path);

/// Gives the complete file its name; false with errno when it could not be.
bool putInPlace(const std::filesystem::path& path, const std::string& target);

/// Removes what has not been put in place. Needs no memory.
void removeReplacement(const std::filesystem::path& path) noexcept;

}  // namespace mcbin

#endif
