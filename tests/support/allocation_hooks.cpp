#include "support/allocation_hooks.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::atomic<std::size_t> allocations{0};
std::atomic<std::size_t> largest{std::numeric_limits<std::size_t>::max()};
std::atomic<std::size_t> live{0};
// Numbers of the allocations that fail, counted from the one after `countedFrom`.
std::atomic<std::size_t> countedFrom{0};
std::atomic<std::size_t> firstFailing{0};
std::atomic<std::size_t> lastFailing{0};

void* allocate(std::size_t size) noexcept {
  const std::size_t number = ++allocations - countedFrom;
  if ((number >= firstFailing && number <= lastFailing) || size > largest) {
    return nullptr;
  }
  void* memory = std::malloc(size > 0 ? size : 1);
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void release(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  std::free(memory);
}

void* allocateOrThrow(std::size_t size) {
  if (void* memory = allocate(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }

namespace mcbinning_tests {

std::size_t Allocations() { return allocations; }

std::size_t LiveAllocations() { return live; }

LargeAllocationsFail::LargeAllocationsFail(std::size_t bytes) { largest = bytes; }

LargeAllocationsFail::~LargeAllocationsFail() { largest = std::numeric_limits<std::size_t>::max(); }

AllocationsFail::AllocationsFail(std::size_t first, std::size_t last) {
  countedFrom = allocations.load();
  firstFailing = first;
  lastFailing = last;
}

AllocationsFail::~AllocationsFail() { lastFailing = 0; }

std::size_t AllocationsFail::Made() const { return allocations - countedFrom; }

}  // namespace mcbinning_tests
