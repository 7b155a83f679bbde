// Every mutant of the library in one build: MCB_MUTANT names the one that is on, none when it is
// not set. scripts/mutate.py puts calls to these functions in the place of operators and constants.
// MCB_MUTANTS_REACHED names a file with one byte a mutant; those that are come by become 1.
#ifndef MCBINNING_SCRIPTS_MUTATION_SWITCH_H
#define MCBINNING_SCRIPTS_MUTATION_SWITCH_H

#ifdef __cplusplus

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <type_traits>

namespace mutation {

inline int fromEnvironment() {
  const char* text = std::getenv("MCB_MUTANT");
  return text != nullptr ? std::atoi(text) : 0;
}

// Shared memory, so that what a killed child reached is known too.
inline char* reachedFromEnvironment() {
  const char* name = std::getenv("MCB_MUTANTS_REACHED");
  const int file = name != nullptr ? ::open(name, O_RDWR | O_CLOEXEC) : -1;
  struct stat status = {};
  if (file < 0 || ::fstat(file, &status) != 0) {
    return nullptr;
  }
  void* bytes = ::mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ | PROT_WRITE,
                       MAP_SHARED, file, 0);
  ::close(file);
  return bytes != MAP_FAILED ? static_cast<char*>(bytes) : nullptr;
}

inline const int kActive = fromEnvironment();
inline char* const kReached = reachedFromEnvironment();

inline bool on(int mutant) {
  if (kReached != nullptr) {
    kReached[mutant] = 1;
  }
  return kActive == mutant;
}

// The negation of a condition.
template <typename Condition>
bool flip(int mutant, const Condition& condition) {
  return static_cast<bool>(condition) != on(mutant);
}

template <typename T>
T constant(int mutant, T value) {
  if constexpr (std::is_same_v<T, bool>) {
    return value != on(mutant);
  } else {
    return on(mutant) ? static_cast<T>(value + 1) : value;
  }
}

template <typename T>
auto minus(int mutant, T value) {
  return on(mutant) ? +value : -value;
}

// What is added or taken away, with the other sign.
template <typename T>
auto amount(int mutant, T value) {
  return on(mutant) ? static_cast<T>(-value) : value;
}

#define MUTATION_COMPARISON(name, operation, other, negated)                        \
  template <typename Left, typename Right>                                          \
  bool name(int mutant, int negation, const Left& left, const Right& right) {       \
    return on(mutant) ? left other right                                            \
                      : (on(negation) ? left negated right : left operation right); \
  }
MUTATION_COMPARISON(less, <, <=, >=)
MUTATION_COMPARISON(lessOrEqual, <=, <, >)
MUTATION_COMPARISON(greater, >, >=, <=)
MUTATION_COMPARISON(greaterOrEqual, >=, >, <)
#undef MUTATION_COMPARISON

template <typename Left, typename Right>
bool equal(int mutant, const Left& left, const Right& right) {
  return (left == right) != on(mutant);
}

template <typename Left, typename Right>
bool notEqual(int mutant, const Left& left, const Right& right) {
  return (left != right) != on(mutant);
}

#define MUTATION_ARITHMETIC(name, operation, other)              \
  template <typename Left, typename Right>                       \
  auto name(int mutant, Left left, Right right) {                \
    return on(mutant) ? left other right : left operation right; \
  }
MUTATION_ARITHMETIC(add, +, -)
MUTATION_ARITHMETIC(subtract, -, +)
MUTATION_ARITHMETIC(multiply, *, /)
MUTATION_ARITHMETIC(divide, /, *)
MUTATION_ARITHMETIC(shiftLeft, <<, >>)
MUTATION_ARITHMETIC(shiftRight, >>, <<)
MUTATION_ARITHMETIC(bitAnd, &, |)
MUTATION_ARITHMETIC(bitOr, |, &)
#undef MUTATION_ARITHMETIC

}  // namespace mutation

#endif

#endif
