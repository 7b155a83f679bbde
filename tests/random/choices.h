/// The choices that random tests, properties and fuzz targets are made of.
#ifndef MCBINNING_TESTS_RANDOM_CHOICES_H
#define MCBINNING_TESTS_RANDOM_CHOICES_H

#include <mccomvor/missing_value.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace mcbinning_tests {

/// Draws from a seed, the same with every standard library, or from the bytes of a fuzz input; when
/// those are used up, everything is the least it can be.
class Choices {
 public:
  explicit Choices(std::uint64_t seed) : isSeeded_(true), engine_(seed) {}
  explicit Choices(std::span<const std::uint8_t> bytes) : isSeeded_(false), bytes_(bytes) {}

  /// Never with a seed.
  bool IsUsedUp() const { return !isSeeded_ && bytes_.empty(); }

  /// Goes on from a seed when the bytes are used up.
  void GoOnWith(std::uint64_t seed) {
    isSeeded_ = true;
    engine_.seed(seed);
  }

  /// A whole number of up to 64 bits, made of that many bytes where there are bytes.
  std::uint64_t Bits(unsigned bytes) {
    if (bytes_.empty()) {
      return isSeeded_ ? engine_() : 0U;
    }
    std::uint64_t bits = 0;
    for (; bytes > 0 && !bytes_.empty(); --bytes) {
      bits = bits << 8U | bytes_.front();
      bytes_ = bytes_.subspan(1);
    }
    return bits;
  }

  /// A whole number from 0 to n - 1; `n` must be positive.
  int Below(int n) {
    return static_cast<int>(Bits(n <= 256 ? 1 : (n <= 65536 ? 2 : 4)) %
                            static_cast<std::uint64_t>(n));
  }

  /// A whole number from `low` to `high`, both included.
  int Between(int low, int high) { return low + Below(high - low + 1); }

  /// From 0.0 up to, but not including, 1.0.
  double Unit() { return static_cast<double>(Bits(8) >> 11U) * 0x1.0p-53; }

  bool Flag() { return Below(2) == 1; }
  bool OneIn(int n) { return Below(n) == n - 1; }
  bool Chance(double probability) { return Below(65536) >= (1.0 - probability) * 65536.0; }

  template <typename T>
  T Pick(std::initializer_list<T> choices) {
    return *(choices.begin() + Below(static_cast<int>(choices.size())));
  }

  template <typename T>
  const T& Pick(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
  }

  /// The index of one of the weights, each as likely as its share of their sum.
  int Weighted(std::initializer_list<int> weights) {
    int total = 0;
    for (const int weight : weights) {
      total += weight;
    }
    int left = Below(total);
    int index = 0;
    for (const int weight : weights) {
      if (left < weight) {
        break;
      }
      left -= weight;
      ++index;
    }
    return index;
  }

  template <typename Make>
  auto Several(int most, Make make) {
    std::vector<decltype(make())> made(static_cast<std::size_t>(Between(0, most)));
    for (auto& item : made) {
      item = make();
    }
    return made;
  }

  template <typename T>
  void Shuffle(std::vector<T>& items) {
    for (std::size_t i = items.size(); i > 1; --i) {
      std::swap(items[i - 1], items[static_cast<std::size_t>(Below(static_cast<int>(i)))]);
    }
  }

  /// Any int, the extreme ones often.
  int AnyInt() {
    using Limits = std::numeric_limits<int>;
    return Flag() ? Pick({-1, Limits::min(), Limits::max(), -2, 256, 255})
                  : static_cast<int>(static_cast<std::int32_t>(Bits(4)));
  }

  /// Mostly an index below `size`, at times one that is none.
  int Index(int size) {
    return OneIn(16) || size == 0 ? Pick({AnyInt(), -1, size, size + 3}) : Below(size);
  }

  double AnyBits() { return std::bit_cast<double>(Bits(8)); }

  /// A small whole number, a special value or any 64 bits.
  double Number() {
    switch (Below(8)) {
      case 0:
        return Special();
      case 1:
        return AnyBits();
      case 2:
        return 0.1 * Between(-8, 8);
      default:
        return Between(-3, 12);
    }
  }

  double Special() {
    using Limits = std::numeric_limits<double>;
    return Pick({Limits::quiet_NaN(), -Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                 -0.0, 0.0, Limits::denorm_min(), -Limits::denorm_min(), Limits::max(),
                 MCMV::gMissingValue, Limits::min(), 1e300, -1e300, 0x1p53, 0.5,
                 Limits::epsilon()});
  }

  /// Few names, so that they meet again; empty, long and with a NUL inside at times.
  std::string Text() {
    switch (Below(16)) {
      case 0:
        return {};
      case 1:
        return std::string(static_cast<std::size_t>(Below(600)), 'v');
      case 2:
        return std::string("v\0w", 3);
      case 3: {
        std::string text(static_cast<std::size_t>(Below(40)), ' ');
        for (char& letter : text) {
          letter = static_cast<char>(Bits(1));
        }
        return text;
      }
      default:
        return std::string(1, static_cast<char>('a' + Below(6)));
    }
  }

 private:
  bool isSeeded_;
  std::mt19937_64 engine_;
  std::span<const std::uint8_t> bytes_;
};

}  // namespace mcbinning_tests

#endif
