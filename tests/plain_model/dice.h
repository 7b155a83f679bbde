/// Seeded randomness that gives the same numbers with every standard library.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_DICE_H
#define MCBINNING_TESTS_PLAIN_MODEL_DICE_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <vector>

namespace plain_model {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// A whole number from 0 to n - 1; `n` must be positive.
  int Below(int n) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(n)); }

  /// A whole number from `low` to `high`, both included.
  int Between(int low, int high) { return low + Below(high - low + 1); }

  /// From 0.0 up to, but not including, 1.0.
  double Unit() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }

  bool Chance(double probability) { return Unit() < probability; }

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

 private:
  std::mt19937_64 engine_;
};

}  // namespace plain_model

#endif
