#include "support/allocation_hooks.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::atomic<std::size_t> allocations{0};
std::atomic<std::size_t> largest{std::numeric_limits<std::size_t>::max()};
std::atomic<std::size_t> failing{0};  // number of the allocation that fails, 0 for none

void* allocate(std::size_t size) noexcept {
  const bool fails = ++allocations == failing || size > largest;
  return fails ? nullptr : std::malloc(size > 0 ? size : 1);
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
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace mcbinning_tests {

std::size_t Allocations() { return allocations; }

LargeAllocationsFail::LargeAllocationsFail(std::size_t bytes) { largest = bytes; }

LargeAllocationsFail::~LargeAllocationsFail() { largest = std::numeric_limits<std::size_t>::max(); }

OneAllocationFails::OneAllocationFails(std::size_t call) { failing = allocations + call; }

OneAllocationFails::~OneAllocationFails() { failing = 0; }

bool OneAllocationFails::Happened() const { return allocations >= failing; }

}  // namespace mcbinning_tests
