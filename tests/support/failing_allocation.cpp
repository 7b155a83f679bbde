#include "support/failing_allocation.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr long kNever = std::numeric_limits<long>::max();

// Per thread, so that threads of a test do not disturb each other.
thread_local long allocations = 0;
thread_local long firstFailure = kNever;
thread_local long lastFailure = kNever;
thread_local bool hasFailed = false;

void failFrom(long first, long last) {
  allocations = 0;
  firstFailure = first;
  lastFailure = last;
  hasFailed = false;
}

void* allocate(std::size_t size) noexcept {
  if (firstFailure != kNever) {
    ++allocations;
    if (allocations >= firstFailure && allocations <= lastFailure) {
      hasFailed = true;
      return nullptr;
    }
  }
  return std::malloc(size > 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { std::free(memory); }

namespace mcbinning_tests {

FailAfter::FailAfter(long count) { failFrom(count + 1, kNever); }

FailAfter::~FailAfter() { failFrom(kNever, kNever); }

bool FailAfter::HasFailed() const { return hasFailed; }

FailOnce::FailOnce(long count) { failFrom(count, count); }

FailOnce::~FailOnce() { failFrom(kNever, kNever); }

bool FailOnce::HasFailed() const { return hasFailed; }

}  // namespace mcbinning_tests
