/// Files for tests, gone when the test is over.
#ifndef MCBIN_TESTS_TOOLKIT_SUPPORT_TEMPORARY_FILE_H
#define MCBIN_TESTS_TOOLKIT_SUPPORT_TEMPORARY_FILE_H

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "toolkit/system/temporary_directory.h"

namespace mcbin::testing {

class TemporaryFiles {
 public:
  TemporaryFiles() : directory_(temporaryRoot()) {}

  std::string Path(const std::string& name) const { return directory_.Path() + "/" + name; }

  /// Writes a file of that name and returns its path.
  std::string Write(const std::string& name, std::string_view bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }

  const std::string& Directory() const { return directory_.Path(); }

 private:
  TemporaryDirectory directory_;
};

inline std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What the DataError (or other error) of `action` says; a text of its own when it does not throw.
template <class Error, class Action>
std::string messageOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.what();
  }
  return "(nothing was thrown)";
}

}  // namespace mcbin::testing

#endif
