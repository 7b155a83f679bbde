#ifndef MCBINNING_TESTS_SUPPORT_SCRATCH_DIRECTORY_H
#define MCBINNING_TESTS_SUPPORT_SCRATCH_DIRECTORY_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace mcbinning_tests {

/// A directory of its own for one test, which must be empty again when the test is done with it:
/// what is left fails the test. The directory goes in any case.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    const std::string parent = std::filesystem::temp_directory_path().generic_string();
    std::random_device random;
    do {
      path_ = parent + "/mcbinning-test-" + std::to_string(random());
    } while (!std::filesystem::create_directory(path_));
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory() {
    for (const std::string& entry : Entries()) {
      ADD_FAILURE() << "left behind: " << entry;
    }
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// Without a separator at the end.
  const std::string& Path() const { return path_; }

  /// The names in the directory, without the directory.
  std::vector<std::string> Entries() const {
    std::vector<std::string> entries;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      entries.push_back(entry.path().filename().string());
    }
    return entries;
  }

  /// Those that are no claims of the library.
  std::vector<std::string> Files() const {
    std::vector<std::string> files = Entries();
    files.erase(std::remove_if(files.begin(), files.end(),
                               [](const std::string& name) {
                                 return name.rfind("mcbinning-columns-", 0) == 0;
                               }),
                files.end());
    return files;
  }

  bool IsEmpty() const { return Entries().empty(); }

  /// For a test that puts something there itself. What is in use stays where the system keeps it.
  void Clear() const {
    std::error_code inUse;
    for (const std::string& entry : Entries()) {
      std::filesystem::remove_all(path_ + "/" + entry, inUse);
    }
  }

 private:
  std::string path_;
};

}  // namespace mcbinning_tests

#endif
