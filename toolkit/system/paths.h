/// Paths as the standard library sees them.
#ifndef MCBIN_TOOLKIT_SYSTEM_PATHS_H
#define MCBIN_TOOLKIT_SYSTEM_PATHS_H

#include <filesystem>
#include <string>

namespace mcbin {

/// The path of those bytes; on Windows, where paths are text, they are UTF-8.
inline std::filesystem::path pathOf(const std::string& bytes) {
  return std::u8string(bytes.begin(), bytes.end());
}

/// The other way round.
inline std::string bytesOf(const std::filesystem::path& path) {
  const std::u8string bytes = path.u8string();
  return {bytes.begin(), bytes.end()};
}

}  // namespace mcbin

#endif
