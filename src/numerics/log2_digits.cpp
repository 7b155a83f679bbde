// Squaring a number doubles its logarithm, which moves the binary digits of the logarithm by one
// place: with 1 < y < 2 the next digit is 1 when y^2 >= 2, and y goes on as y^2 or y^2 / 2.
//
// y is held in N bits and cut off, so what is held is too small; after k squarings its relative
// error is below 2^k / 2^(N - 1). Hence a digit of 1 is sure, and so is a digit of 0 unless the
// y that follows begins with N - k - 2 ones; then all is done again with N doubled. That ends: the
// logarithm is irrational, so no y is ever 2. For the same reason the digit after the last one kept
// tells how to round.
#include "numerics/log2_digits.h"

#include <bit>
#include <cmath>
#include <optional>
#include <vector>

namespace MCBinning {
namespace {

constexpr std::size_t kWordBits = 32;
constexpr std::uint64_t kSignificandEnd = std::uint64_t{1} << 53;

/// A number from 1 to below 2, the last word first; the highest bit is that of the 1.
using Words = std::vector<std::uint32_t>;

Words fromSignificand(std::uint64_t significand, std::size_t words) {
  Words number(words, 0);
  const std::uint64_t aligned = significand << 11;
  number[words - 1] = static_cast<std::uint32_t>(aligned >> kWordBits);
  number[words - 2] = static_cast<std::uint32_t>(aligned);
  return number;
}

/// The next digit; the number becomes its square, or half of it.
std::uint32_t takeDigit(Words& number) {
  const std::size_t n = number.size();
  Words square(2 * n, 0);
  for (std::size_t i = 0; i < n; ++i) {
    std::uint64_t carry = 0;
    for (std::size_t j = 0; j < n; ++j) {
      carry += std::uint64_t{number[i]} * number[j] + square[i + j];
      square[i + j] = static_cast<std::uint32_t>(carry);
      carry >>= kWordBits;
    }
    square[i + n] = static_cast<std::uint32_t>(carry);
  }
  const std::uint32_t digit = square.back() >> (kWordBits - 1);
  for (std::size_t i = 0; i < n; ++i) {
    number[i] =
        digit == 1 ? square[n + i] : square[n + i] << 1 | square[n + i - 1] >> (kWordBits - 1);
  }
  return digit;
}

std::size_t leadingOnes(const Words& number) {
  std::size_t ones = 0;
  for (auto word = number.rbegin(); word != number.rend(); ++word) {
    ones += static_cast<std::size_t>(std::countl_one(*word));
    if (*word != ~std::uint32_t{0}) {
      break;
    }
  }
  return ones;
}

/// Nothing when so many words are too few.
std::optional<double> log2InWords(std::int64_t exponent, std::uint64_t significand,
                                  std::size_t words) {
  const bool isNegative = exponent < 0;
  // Of a negative logarithm -exponent - 1 and the complements of the digits make the magnitude.
  auto magnitude = static_cast<std::uint64_t>(isNegative ? -exponent - 1 : exponent);
  Words number = fromSignificand(significand, words);
  int places = 0;
  while (magnitude < kSignificandEnd) {  // until it has one bit more than a double
    const std::uint32_t digit = takeDigit(number);
    ++places;
    if (digit == 0 &&
        leadingOnes(number) + static_cast<std::size_t>(places) + 2 >= words * kWordBits) {
      return std::nullopt;
    }
    magnitude = 2 * magnitude + (digit ^ (isNegative ? 1U : 0U));
  }
  const std::uint64_t nearest = (magnitude + 1) >> 1;
  const double rounded = std::ldexp(static_cast<double>(nearest), 1 - places);
  return isNegative ? -rounded : rounded;
}

}  // namespace

double log2ByDigits(std::int64_t exponent, std::uint64_t significand, std::size_t words) {
  for (;; words *= 2) {
    if (const std::optional<double> result = log2InWords(exponent, significand, words)) {
      return *result;
    }
  }
}

}  // namespace MCBinning
