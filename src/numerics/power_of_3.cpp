// The powers are made by the compiler, in whole numbers of as many words as they need.
#include "numerics/power_of_3.h"

#include <array>
#include <bit>
#include <cstdint>

namespace MCBinning {
namespace {

constexpr int kWordBits = 32;
constexpr std::size_t kWords = 26;  // 3^512 has 812 bits

/// A whole number, the last word first.
using Words = std::array<std::uint32_t, kWords>;

constexpr void triple(Words& number) {
  std::uint64_t carry = 0;
  for (std::uint32_t& word : number) {
    carry += std::uint64_t{3} * word;
    word = static_cast<std::uint32_t>(carry);
    carry >>= kWordBits;
  }
}

constexpr double powerOf2(std::size_t exponent) {
  return std::bit_cast<double>((std::uint64_t{1023} + exponent) << 52);
}

constexpr double nearestDouble(const Words& odd) {
  std::size_t top = kWords - 1;
  while (top > 1 && odd[top] == 0) {
    --top;
  }
  const std::uint64_t twoWords = std::uint64_t{odd[top]} << kWordBits | odd[top - 1];
  if (top == 1) {
    return static_cast<double>(twoWords);
  }
  const auto shift = static_cast<std::size_t>(std::countl_zero(twoWords));
  const std::uint64_t next = std::uint64_t{odd[top - 2]} << shift >> kWordBits;
  // What follows these 64 bits is not 0, since the number is odd; the last of them stands for it.
  const std::uint64_t head = twoWords << shift | next | 1;
  return static_cast<double>(head) * powerOf2((top - 1) * kWordBits - shift);
}

constexpr auto kPowers = [] {
  std::array<double, kLargestPowerOf3 + 1> powers{};
  Words power{1};
  for (double& rounded : powers) {
    rounded = nearestDouble(power);
    triple(power);
  }
  return powers;
}();

}  // namespace

double powerOf3(std::size_t exponent) { return kPowers[exponent]; }

}  // namespace MCBinning
