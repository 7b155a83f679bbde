#ifndef MCBINNING_TESTS_SUPPORT_ALLOCATION_HOOKS_H
#define MCBINNING_TESTS_SUPPORT_ALLOCATION_HOOKS_H

#include <cstddef>

// Linking allocation_hooks.cpp into a test program replaces its operator new and delete.
namespace mcbinning_tests {

/// Allocations made by operator new so far, failed ones included.
std::size_t Allocations();

/// Those that succeeded and were not given back yet.
std::size_t LiveAllocations();

/// While one of these lives, every allocation of more than `bytes` bytes fails. One at a time.
class LargeAllocationsFail {
 public:
  explicit LargeAllocationsFail(std::size_t bytes);
  LargeAllocationsFail(const LargeAllocationsFail&) = delete;
  LargeAllocationsFail& operator=(const LargeAllocationsFail&) = delete;
  ~LargeAllocationsFail();
};

/// While one of these lives, the allocations of number `first` to `last` (from 1) fail. One at a
/// time.
class AllocationsFail {
 public:
  AllocationsFail(std::size_t first, std::size_t last);
  AllocationsFail(const AllocationsFail&) = delete;
  AllocationsFail& operator=(const AllocationsFail&) = delete;
  ~AllocationsFail();

  /// Allocations made since.
  std::size_t Made() const;
};

/// While one of these lives, the allocation of number `call` fails.
class OneAllocationFails : public AllocationsFail {
 public:
  explicit OneAllocationFails(std::size_t call) : AllocationsFail(call, call) {}
};

}  // namespace mcbinning_tests

#endif
