/// The steps in which one file replaces another, in the operating system's ways.
#ifndef MCBIN_TOOLKIT_SYSTEM_REPLACEMENT_H
#define MCBIN_TOOLKIT_SYSTEM_REPLACEMENT_H

#include <cstdio>
#include <string>

namespace mcbin {

/// Whether something has the path that is no regular file: a device, a pipe, a directory.
bool isNoRegularFile(const std::string& path);

/// Makes a file of a random name beside `target` and sets `path` to it. Where `target` is there,
/// the new file is as public as that one and, where that is allowed, its owner's. Null with errno
/// on failure.
std::FILE* makeReplacement(const std::string& target, std::string& path);

/// Gives the complete file its name; false with errno when it could not be.
bool putInPlace(const std::string& path, const std::string& target);

}  // namespace mcbin

#endif
