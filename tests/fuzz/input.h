/// The bytes of one fuzz input as numbers, texts and choices. When they are used up, everything is
/// the least it can be.
#ifndef MCBINNING_TESTS_FUZZ_INPUT_H
#define MCBINNING_TESTS_FUZZ_INPUT_H

#include <fuzzer/FuzzedDataProvider.h>
#include <mccomvor/missing_value.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace fuzz {

class Input {
 public:
  Input(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes, size) {}

  bool IsUsedUp() { return bytes_.remaining_bytes() == 0; }

  /// From `low` to `high`, both included.
  int Between(int low, int high) { return bytes_.ConsumeIntegralInRange(low, high); }
  int Below(int n) { return Between(0, n - 1); }
  bool Flag() { return bytes_.ConsumeBool(); }

  /// True once in `n` times.
  bool OneIn(int n) { return Below(n) == n - 1; }

  template <typename T>
  T Pick(std::initializer_list<T> choices) {
    return *(choices.begin() + Below(static_cast<int>(choices.size())));
  }

  /// Any int, the extreme ones often.
  int AnyInt() {
    return Flag() ? Pick({-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), -2,
                          256, 255})
                  : bytes_.ConsumeIntegral<int>();
  }

  /// Mostly an index below `size`, at times one that is none.
  int Index(std::size_t size) {
    return OneIn(8) || size == 0 ? AnyInt() : Below(static_cast<int>(size));
  }

  /// A small whole number, a special value or any 64 bits.
  double Number() {
    switch (Below(8)) {
      case 0:
        return Special();
      case 1:
        return std::bit_cast<double>(bytes_.ConsumeIntegral<std::uint64_t>());
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
      case 3:
        return bytes_.ConsumeRandomLengthString(40);
      default:
        return std::string(1, static_cast<char>('a' + Below(6)));
    }
  }

  template <typename Make>
  auto Several(int most, Make make) {
    std::vector<decltype(make())> made(static_cast<std::size_t>(Between(0, most)));
    for (auto& item : made) {
      item = make();
    }
    return made;
  }

 private:
  FuzzedDataProvider bytes_;
};

}  // namespace fuzz

#endif
