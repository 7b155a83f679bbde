#ifndef MCBINNING_TESTS_SUPPORT_VIRTUAL_SLOTS_H
#define MCBINNING_TESTS_SUPPORT_VIRTUAL_SLOTS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace mcbinning_tests {

constexpr auto kNotVirtual = static_cast<std::size_t>(-2);

/// The slot of a first virtual operation that no virtual destructor precedes.
constexpr auto kBeforeSlot0 = static_cast<std::size_t>(-1);

/// The slot of a virtual operation, counted as a host reads an interface: the destructor is slot 0,
/// the operation declared after it slot 1. Under the Itanium C++ ABI a pointer to a virtual member
/// holds 1 plus the operation's byte offset in the virtual table, in which a destructor takes two
/// entries.
template <typename MemberPointer>
std::size_t VirtualSlot(MemberPointer operation) {
  static_assert(sizeof operation == 2 * sizeof(std::ptrdiff_t));
  std::ptrdiff_t words[2];
  std::memcpy(words, &operation, sizeof words);
  if (words[0] % 2 == 0) {
    return kNotVirtual;
  }
  const auto entry = static_cast<std::size_t>(words[0] - 1) / sizeof(void*);
  return entry - 1;
}

}  // namespace mcbinning_tests

#endif
