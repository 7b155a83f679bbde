#ifndef MCBINNING_TESTS_SYSTEM_LIMITED_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_LIMITED_PROCESS_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>

namespace mcbinning_tests {

/// While one of these lives, file permissions apply: root lets itself into everything otherwise.
class WithoutPrivileges {
 public:
  WithoutPrivileges() : user_(geteuid()) {
    if (user_ == 0) {
      EXPECT_EQ(seteuid(kNobody), 0);
    }
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
  ~WithoutPrivileges() { EXPECT_EQ(seteuid(user_), 0); }

 private:
  static constexpr uid_t kNobody = 65534;

  uid_t user_;
};

/// While one of these lives, the process can open no file, where a system can be told so.
class WithoutFileHandles {
 public:
  WithoutFileHandles() {
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before_), 0);
    const rlimit none = {0, before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  }
  WithoutFileHandles(const WithoutFileHandles&) = delete;
  WithoutFileHandles& operator=(const WithoutFileHandles&) = delete;
  ~WithoutFileHandles() { EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &before_), 0); }

  static constexpr bool IsSet() { return true; }

 private:
  rlimit before_{};
};

/// While one of these lives, a directory is the process's root directory, where it may be.
class RootDirectory {
 public:
  explicit RootDirectory(const std::string& directory)
      : before_(open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
        isSet_(before_ >= 0 && chroot(directory.c_str()) == 0) {}
  RootDirectory(const RootDirectory&) = delete;
  RootDirectory& operator=(const RootDirectory&) = delete;
  ~RootDirectory() {
    if (isSet_) {
      const int working = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      EXPECT_EQ(fchdir(before_), 0);
      EXPECT_EQ(chroot("."), 0);
      EXPECT_EQ(fchdir(working), 0);
      close(working);
    }
    close(before_);
  }

  bool IsSet() const { return isSet_; }

 private:
  int before_;
  bool isSet_;
};

}  // namespace mcbinning_tests

#endif
