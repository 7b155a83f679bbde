#include "platform/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/file_claim.h"

namespace MCBinning {
namespace {

// Linux transfers at most 2^31 - 4096 bytes a call and reports a short count beyond that.
constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

int openRetrying(const std::string& name, int flags) {
  int descriptor = -1;
  do {
    descriptor = ::open(name.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

bool opened(int descriptor, FileHandle& file) {
  if (descriptor < 0) {
    return false;
  }
  file = descriptor;
  return true;
}

/// Somebody may have put a pipe or a device under the name of a file. Neither opening it nor
/// reading from it may wait.
bool openedRegular(const std::string& name, int flags, FileHandle& file) {
  const int descriptor = openRetrying(name, flags | O_NONBLOCK | O_NOCTTY);
  struct stat state {};
  if (descriptor >= 0 && (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode))) {
    ::close(descriptor);
    return false;
  }
  return opened(descriptor, file);
}

std::string directoryHolding(const std::string& name) {
  const std::size_t separator = name.rfind('/');
  return separator == std::string::npos ? "." : name.substr(0, separator + 1);
}

bool exists(const std::string& name) {
  struct stat state {};
  return ::lstat(name.c_str(), &state) == 0;
}

/// The state of a name that nothing has.
NameState stateInDirectory(const std::string& directory) {
  // The effective user counts, since that is who creates the files.
  if (::faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) == 0) {
    return NameState::Free;
  }
  switch (errno) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:         // links that lead nowhere but to each other
    case ENAMETOOLONG:  // no directory can have such a name
      return NameState::NoDirectory;
    default:
      return NameState::DirectoryRefused;
  }
}

class PosixFileSystem final : public FileSystem {
 public:
  NameState Probe(const std::string& name) override {
    // Without O_NONBLOCK a pipe of that name would hold the run up until somebody writes to it.
    const int descriptor = openRetrying(name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (descriptor >= 0) {
      ::close(descriptor);
      return NameState::Taken;
    }
    if (errno == EMFILE || errno == ENFILE) {
      return NameState::TooManyOpenFiles;
    }
    // What cannot be opened may be there all the same: a link, a socket, a file that is shut.
    return exists(name) ? NameState::Taken : stateInDirectory(directoryHolding(name));
  }

  bool MakeClaim(const std::string& prefix, FileClaim& claim) override {
    return makeClaimDirectory(prefix, claim);
  }

  void DropClaim(FileClaim& claim, bool isOwner) noexcept override {
    dropClaimDirectory(claim, isOwner);
  }

  void RemoveAbandoned(const std::string& prefix) noexcept override {
    removeAbandonedClaims(prefix);
  }

  CreateResult Create(const std::string& name, const FileClaim& claim, FileHandle& file) override {
    if (claim.handle != kNoFile) {
      const CreateResult result = createInClaim(claim, name, file);
      if (result != CreateResult::Failed) {
        return result;
      }
    }
    if (opened(openRetrying(name, O_WRONLY | O_APPEND | O_CREAT | O_EXCL), file)) {
      return CreateResult::Created;
    }
    return errno == EEXIST ? CreateResult::NameTaken : CreateResult::Failed;
  }

  bool OpenForAppend(const std::string& name, FileHandle& file) override {
    return openedRegular(name, O_WRONLY | O_APPEND, file);
  }

  bool OpenForReading(const std::string& name, FileHandle& file) override {
    return openedRegular(name, O_RDONLY, file);
  }

  bool Write(FileHandle file, const void* bytes, std::size_t size) override {
    const char* next = static_cast<const char*>(bytes);
    while (size > 0) {
      const ssize_t written =
          ::write(static_cast<int>(file), next, std::min(size, kLargestTransfer));
      if (written < 0 && errno == EINTR) {
        continue;
      }
      if (written <= 0) {
        return false;
      }
      next += written;
      size -= static_cast<std::size_t>(written);
    }
    return true;
  }

  bool Read(FileHandle file, void* bytes, std::size_t size, std::size_t& bytesRead) override {
    char* next = static_cast<char*>(bytes);
    bytesRead = 0;
    while (bytesRead < size) {
      const ssize_t got = ::read(static_cast<int>(file), next + bytesRead,
                                 std::min(size - bytesRead, kLargestTransfer));
      if (got < 0 && errno == EINTR) {
        continue;
      }
      if (got <= 0) {
        return got == 0;
      }
      bytesRead += static_cast<std::size_t>(got);
    }
    return true;
  }

  bool SeekToStart(FileHandle file) override {
    return ::lseek(static_cast<int>(file), 0, SEEK_SET) == 0;
  }

  bool Close(FileHandle file) noexcept override {
    // Not taken up again when interrupted: the descriptor is gone by then and may be another
    // file's.
    return ::close(static_cast<int>(file)) == 0;
  }

  bool Remove(const std::string& name, const FileClaim& claim) noexcept override {
    return (claim.handle != kNoFile && removeFromClaim(claim, name)) ||
           ::unlink(name.c_str()) == 0 || errno == ENOENT;
  }
};

}  // namespace

FileSystem& realFileSystem() {
  static constinit PosixFileSystem files;
  return files;
}

}  // namespace MCBinning
