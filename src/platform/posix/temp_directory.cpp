#include "platform/temp_directory.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>

namespace MCBinning {

namespace {

bool isDirectory(const char* name) {
  struct stat status = {};
  return name != nullptr && stat(name, &status) == 0 && S_ISDIR(status.st_mode);
}

/// What the runtime would name a temporary file, as far as the directory goes; empty for none.
std::string temporaryFileName() {
  for (const char* candidate :
       {static_cast<const char*>(std::getenv("TMPDIR")), P_tmpdir, "/tmp"}) {
    if (isDirectory(candidate)) {
      std::string directory = candidate;
      while (directory.size() > 1 && directory.back() == '/') {
        directory.pop_back();
      }
      return directory + "/file";
    }
  }
  return {};
}

}  // namespace

std::string tempDirectory() { return directoryOf(temporaryFileName(), '/'); }

}  // namespace MCBinning
