#ifndef MCBINNING_TESTS_SUPPORT_ALLOCATION_HOOKS_H
#define MCBINNING_TESTS_SUPPORT_ALLOCATION_HOOKS_H

#include <cstddef>

// Linking allocation_hooks.cpp into a test program replaces its operator new and delete.
namespace mcbinning_tests {

/// Allocations made by operator new so far, failed ones included.
std::size_t Allocations();

/// While one of these lives, every allocation of more than `bytes` bytes fails. One at a time.
class LargeAllocationsFail {
 public:
  explicit LargeAllocationsFail(std::size_t bytes);
  LargeAllocationsFail(const LargeAllocationsFail&) = delete;
  LargeAllocationsFail& operator=(const LargeAllocationsFail&) = delete;
  ~LargeAllocationsFail();
};

/// While one of these lives, the allocation of number `call` (from 1) fails. One at a time.
class OneAllocationFails {
 public:
  explicit OneAllocationFails(std::size_t call);
  OneAllocationFails(const OneAllocationFails&) = delete;
  OneAllocationFails& operator=(const OneAllocationFails&) = delete;
  ~OneAllocationFails();

  /// Whether that many allocations were made.
  bool Happened() const;
};

}  // namespace mcbinning_tests

#endif
