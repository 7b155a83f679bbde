#ifndef MCBINNING_TESTS_SUPPORT_FAILING_ALLOCATION_H
#define MCBINNING_TESTS_SUPPORT_FAILING_ALLOCATION_H

namespace mcbinning_tests {

/// While one lives, the global operator new succeeds `count` times and then always fails. Link
/// failing_allocation.cpp, which replaces the operator for the whole program.
class FailAfter {
 public:
  explicit FailAfter(long count);
  FailAfter(const FailAfter&) = delete;
  FailAfter& operator=(const FailAfter&) = delete;
  ~FailAfter();

  /// Whether an allocation has failed.
  bool HasFailed() const;
};

/// While one lives, the global operator new fails at its `count`-th call from now (from 1) only.
class FailOnce {
 public:
  explicit FailOnce(long count);
  FailOnce(const FailOnce&) = delete;
  FailOnce& operator=(const FailOnce&) = delete;
  ~FailOnce();

  /// Whether that allocation has been asked for.
  bool HasFailed() const;
};

}  // namespace mcbinning_tests

#endif
