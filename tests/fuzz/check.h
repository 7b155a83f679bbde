#ifndef MCBINNING_TESTS_FUZZ_CHECK_H
#define MCBINNING_TESTS_FUZZ_CHECK_H

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace fuzz {

/// Ends the program, which the fuzzer takes for a find, when `holds` is false.
inline void check(bool holds, const char* what) {
  if (!holds) {
    std::cerr << "fuzz: does not hold: " << what << std::endl;
    std::abort();
  }
}

/// Bit by bit, except that all NaN are alike.
inline bool isSame(double left, double right) {
  return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
         (std::isnan(left) && std::isnan(right));
}

inline bool isSame(const std::vector<double>& left, const std::vector<double>& right) {
  if (left.size() != right.size()) {
    return false;
  }
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (!isSame(left[i], right[i])) {
      return false;
    }
  }
  return true;
}

}  // namespace fuzz

#endif
