#ifndef MCBINNING_TESTS_SUPPORT_LIMITED_PROCESS_H
#define MCBINNING_TESTS_SUPPORT_LIMITED_PROCESS_H

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

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

/// While one of these lives, the process can open no file.
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

 private:
  rlimit before_{};
};

}  // namespace mcbinning_tests

#endif
