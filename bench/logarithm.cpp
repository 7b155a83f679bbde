// Prints the time of the component's logarithm beside that of the C library, by kinds of arguments.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "numerics/log2.h"

namespace {

constexpr int kRepetitions = 1000;
constexpr double kBound = 1.6;
constexpr double kAim = 1.2;

double sink = 0.0;

/// Nanoseconds for one argument.
template <typename Function>
double timeOf(const std::vector<double>& arguments, Function logarithm) {
  const auto start = std::chrono::steady_clock::now();
  double sum = 0.0;
  for (const double x : arguments) {
    sum += logarithm(x);
  }
  const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
  sink += sum;
  return time.count() / static_cast<double>(arguments.size());
}

void compare(const char* kind, const std::function<double()>& makeArgument) {
  std::vector<double> arguments(10000);
  std::generate(arguments.begin(), arguments.end(), makeArgument);
  // The least times, taken in turns: whatever else the machine does makes a time longer.
  double own = std::numeric_limits<double>::infinity();
  double library = own;
  for (int i = 0; i < kRepetitions; ++i) {
    own = std::min(own, timeOf(arguments, [](double x) { return MCBinning::roundedLog2(x); }));
    library = std::min(library, timeOf(arguments, [](double x) { return std::log2(x); }));
  }
  const double ratio = own / library;
  std::printf("| %-40s | %6.2f | %6.2f | %5.2f | %4.2f | %4.2f | %s |\n", kind, own, library, ratio,
              kBound, kAim, ratio <= kAim ? "aim" : (ratio <= kBound ? "bound" : "OVER"));
}

}  // namespace

int main() {
  std::mt19937_64 random(1);
  const auto unit = [&random] { return static_cast<double>(1 + (random() >> 11)) * 0x1p-53; };
  std::printf("| logarithm of, ns | own | C library | ratio | bound | aim | reached |\n");
  std::printf("|---|---|---|---|---|---|---|\n");
  compare("shares", unit);
  compare("shares above 0.99", [&] { return 1.0 - 0.01 * unit(); });
  compare("shares above 0.9999", [&] { return 1.0 - 0.0001 * unit(); });
  compare("whole numbers up to a million", [&] { return std::ceil(1e6 * unit()); });
  compare("numbers of any size",
          [&] { return std::ldexp(unit(), static_cast<int>(random() % 2000) - 1000); });
  return sink == 0.0 ? 1 : 0;
}
