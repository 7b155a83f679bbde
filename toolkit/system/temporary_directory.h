/// A directory that leaves nothing behind.
#ifndef MCBIN_TOOLKIT_SYSTEM_TEMPORARY_DIRECTORY_H
#define MCBIN_TOOLKIT_SYSTEM_TEMPORARY_DIRECTORY_H

#include <memory>
#include <string>

namespace mcbin {

/// Where temporary files go: TMPDIR when it is set and not empty, else /tmp, on Windows the user's
/// folder for them.
std::string temporaryRoot();

/// A new directory in `root` that goes away, with the files in it, when the object does in the
/// process that made it; a copy in a forked child removes nothing. Going away takes neither memory
/// nor a descriptor. A locked file in it tells that its process lives; making a directory removes
/// those of the same user in `root` that hold such a file and whose process has died.
class TemporaryDirectory {
 public:
  /// DataError when the directory cannot be made.
  explicit TemporaryDirectory(const std::string& root);
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  const std::string& Path() const { return path_; }

 private:
  struct Handles;

  std::string path_;
  std::unique_ptr<Handles> handles_;
};

}  // namespace mcbin

#endif
