#ifndef MCBINNING_TESTS_SYSTEM_LIMITED_PROCESS_H
#define MCBINNING_TESTS_SYSTEM_LIMITED_PROCESS_H

namespace mcbinning_tests {

/// Limits nothing: Windows knows no limit of the handles of a process.
class WithoutFileHandles {
 public:
  WithoutFileHandles() = default;
  WithoutFileHandles(const WithoutFileHandles&) = delete;
  WithoutFileHandles& operator=(const WithoutFileHandles&) = delete;
  ~WithoutFileHandles() {}

  static constexpr bool IsSet() { return false; }
};

}  // namespace mcbinning_tests

#endif
