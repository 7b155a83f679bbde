#include "toolkit/system/replacement.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>

#include "toolkit/system/waiting.h"

namespace mcbin {
namespace {

/// Makes a file that replaces another as public as that one, and its owner's where it may.
void takeOver(const struct stat& replaced, int descriptor) {
  if (::fchown(descriptor, replaced.st_uid, replaced.st_gid) != 0) {
    // Only the superuser gives files away; the group may still be ours.
    static_cast<void>(::fchown(descriptor, static_cast<uid_t>(-1), replaced.st_gid) == 0);
  }
  static_cast<void>(::fchmod(descriptor, replaced.st_mode & 0777U) == 0);
}

}  // namespace

bool isNoRegularFile(const std::string& path) {
  struct stat there = {};
  return ::stat(path.c_str(), &there) == 0 && !S_ISREG(there.st_mode);
}

int openDirectly(const std::string& path, Monitor& monitor) {
  struct stat there = {};
  const bool isPipe = ::stat(path.c_str(), &there) == 0 && S_ISFIFO(there.st_mode);
  while (true) {
    // Waiting inside open() would be deaf to a signal that came just before.
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_NONBLOCK | O_CLOEXEC);
    if (descriptor >= 0 || !(errno == EINTR || (errno == ENXIO && isPipe))) return descriptor;
    pauseAndAsk(monitor);
  }
}

int makeReplacement(const std::string& target, std::filesystem::path& path) {
  std::random_device dice;
  int descriptor = -1;
  do {
    path = fmt::format("{}.{:08x}{:08x}.tmp", target, dice(), dice());
    descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  } while (descriptor < 0 && (errno == EEXIST || errno == EINTR));
  struct stat older = {};
  if (descriptor >= 0 && ::stat(target.c_str(), &older) == 0) takeOver(older, descriptor);
  return descriptor;
}

bool putInPlace(const std::filesystem::path& path, const std::string& target) {
  return std::rename(path.c_str(), target.c_str()) == 0;
}

void removeReplacement(const std::filesystem::path& path) noexcept { ::unlink(path.c_str()); }

}  // namespace mcbin
