#ifndef MCBINNING_PLATFORM_TEMP_DIRECTORY_H
#define MCBINNING_PLATFORM_TEMP_DIRECTORY_H

#include <string>

namespace MCBinning {

/// The directory in which the C runtime would put a temporary file, without a trailing separator;
/// the current directory ("./", on Windows ".\") when there is none. Nothing is created.
std::string tempDirectory();

/// The part of `fileName` before its last `separator`; "." and the separator when there is no
/// separator or nothing before it.
std::string directoryOf(const std::string& fileName, char separator);

}  // namespace MCBinning

#endif
