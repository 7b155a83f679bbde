#include "platform/temp_directory.h"

namespace MCBinning {

std::string directoryOf(const std::string& fileName, char separator) {
  const auto end = fileName.rfind(separator);
  if (end == std::string::npos || end == 0) {
    return {'.', separator};
  }
  return fileName.substr(0, end);
}

}  // namespace MCBinning
