/// How the library is compared with a model, by tests and by fuzz targets alike.
#ifndef MCBINNING_TESTS_RANDOM_AGREEMENT_H
#define MCBINNING_TESTS_RANDOM_AGREEMENT_H

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace mcbinning_tests {

/// What does not agree, in words: a failure of a test, a find of a fuzzer.
class Difference : public std::runtime_error {
  using runtime_error::runtime_error;
};

/// Throws a Difference unless `holds`.
inline void check(bool holds, const char* what) {
  if (!holds) {
    throw Difference(std::string("does not hold: ") + what);
  }
}

/// Doubles are compared bit by bit, except that all NaN are alike.
inline bool isSame(double left, double right) {
  return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
         (std::isnan(left) && std::isnan(right));
}

template <typename Left, typename Right>
bool isSame(const Left& left, const Right& right) {
  return left == right;
}

template <typename T>
bool isSame(const std::vector<T>& left, const std::vector<T>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const T& a, const T& b) { return isSame(a, b); });
}

template <typename T>
void write(std::ostream& os, const T& value) {
  os << value;
}

template <typename T>
void write(std::ostream& os, const std::vector<T>& values) {
  os << '{';
  for (const T& value : values) {
    write(os, value);
    os << ' ';
  }
  os << '}';
}

/// Throws a Difference unless both are the same.
template <typename Library, typename Model>
void compare(const char* what, const Library& library, const Model& model) {
  if (!isSame(library, model)) {
    std::ostringstream text;
    text.precision(17);
    text << what << ": library ";
    write(text, library);
    text << ", model ";
    write(text, model);
    throw Difference(text.str());
  }
}

/// Makes comparisons and says in which of many things they found a difference.
template <typename Comparison>
void within(const char* what, std::size_t index, Comparison comparison) {
  try {
    comparison();
  } catch (const Difference& difference) {
    throw Difference(std::string(what) + ' ' + std::to_string(index) + ": " + difference.what());
  }
}

}  // namespace mcbinning_tests

#endif
