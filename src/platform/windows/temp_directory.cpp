#include "platform/temp_directory.h"

#include <stdio.h>
#include <stdlib.h>

#include <memory>

namespace MCBinning {

std::string tempDirectory() {
  const std::unique_ptr<char, decltype(&free)> fileName(_tempnam("", ""), &free);
  return directoryOf(fileName != nullptr ? fileName.get() : "", '\\');
}

}  // namespace MCBinning
