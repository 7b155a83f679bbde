// MPFR takes microseconds, so a type of more bits than a double decides where these leave no doubt.
#include <mpfr.h>

#include <cmath>

#include "plain_model/correct_rounding.h"

namespace plain_model {
namespace {

constexpr mpfr_prec_t kBitsOfDouble = 53;

class Number {
 public:
  Number() { mpfr_init2(value_, kBitsOfDouble); }
  Number(const Number&) = delete;
  Number& operator=(const Number&) = delete;
  ~Number() { mpfr_clear(value_); }

  mpfr_ptr Get() { return value_; }
  double AsDouble() const { return mpfr_get_d(value_, MPFR_RNDN); }

 private:
  mpfr_t value_;
};

struct MpfrMemory {
  ~MpfrMemory() { mpfr_free_cache(); }
} const mpfrMemory;

// Valgrind calculates with the bits of a double only.
bool hasMoreBits() {
  const volatile long double one = 1.0L;
  return one + 0x1p-60L != one;
}

}  // namespace

double nearestLog2(double x) {
  static const bool isQuick = hasMoreBits();
  const long double y = std::log2(static_cast<long double>(x));
  const long double error = std::fabs(y) * 0x1p-60L;  // eight times the greatest there is
  if (isQuick && static_cast<double>(y - error) == static_cast<double>(y + error)) {
    return static_cast<double>(y);
  }
  return nearestLog2WithoutShortcut(x);
}

double nearestLog2WithoutShortcut(double x) {
  Number result;
  mpfr_set_d(result.Get(), x, MPFR_RNDN);
  mpfr_log2(result.Get(), result.Get(), MPFR_RNDN);
  return result.AsDouble();
}

double nearestPowerOf3(int exponent) {
  Number result;
  mpfr_ui_pow_ui(result.Get(), 3, static_cast<unsigned long>(exponent), MPFR_RNDN);
  return result.AsDouble();
}

}  // namespace plain_model
