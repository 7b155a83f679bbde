// Three ways to the nearest double, each taken only when the one before could not tell it.
//
// The first two write x as 2^e m, 1 <= m < 2, and take a factor f of 11 bits near 1 / m from a
// table of 512 intervals of m. With z = f m - 1, |z| <= Z = 5 / 4096,
//
//     log2 x = e - log2 f + log2(1 + z),    log2(1 + z) = (z - z^2 / 2 + z^3 / 3 - ...) / ln 2.
//
// Products that must be exact have short factors, so it does not matter whether a compiler fuses
// them with an addition:
//
//     m = mh + ml               mh a multiple of 2^-25, ml below 2^-25
//     z = zh + zl               zh = f mh - 1 has 27 bits, zl = f ml has 38
//     1 / ln 2 = k + l          k has 18 bits, |l| < 2^-20.7
//     -log2 f = high + low      high a multiple of 2^-42, so e + high is exact; |low| <= 2^-43
//     e + high + zh k = s + t   for the first two outweigh the last, which the script that writes
//                               the table makes sure of
//
// Where |x - 1| <= 2^-10, z is x - 1, zh its first 27 bits, s = zh k and t = low = 0. What is added
// to s is small, so its rounding errors are, each step's at most u = 2^-53 of its result:
//
// Quickly. Terms up to z^6. In u Z^2 the rounding of z counts 1.5, the four steps to the term of
// z^2 0.73 each, and the three additions from it on, one of them that of the bound, 0.76 each: 6.7
// in all, 2^-69.7. The steps before it, at terms below 2^-24.4, count 2^-75, and what is left out,
// less than Z^7 / 4.8, 2^-70.1: below 2^-68. Without the table, 5.1 u z^2 and |z|^7 / 4.8: below
// 2^-60 |z|.
//
// Carefully. Terms up to z^8. z = v + d, v a multiple of 2^-24, |d| <= 2^-24: v^2 k has 47 bits, so
// it too is added exactly. Of what is left, zl k and the three additions from it on count 2^-78
// each, all others, at terms below 2^-29, 2^-78 together: below 2^-75. Without the table zl k is
// exact and the terms left are below 2^-19.7 |z|, with nine steps at most: below 2^-68 |z|.
//
// By digits, in whole numbers. Powers of two never come so far: the first way is sure of them.
#include "numerics/log2.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>

#include "numerics/log2_digits.h"
#include "numerics/log2_table.h"

#ifdef __FAST_MATH__
#error "roundedLog2 needs its steps in the order in which they are written"
#endif

namespace MCBinning {
namespace {

static_assert(std::numeric_limits<double>::is_iec559 && FLT_EVAL_METHOD == 0);

constexpr double kHigh = 0x1.71548p+0;           // k
constexpr double kLow = -0x1.35a8fa03d1106p-21;  // l
constexpr double kZ1 = 0x1.71547652b82fep+0;     // their sum, nearly
constexpr double kZ2 = -0x1.71547652b82fep-1;    // -1 / (2 ln 2)
constexpr double kZ3 = 0x1.ec709dc3a03fdp-2;     // 1 / (3 ln 2), and so on
constexpr double kZ4 = -0x1.71547652b82fep-2;
constexpr double kZ5 = 0x1.2776c50ef9bfep-2;
constexpr double kZ6 = -0x1.ec709dc3a03fdp-3;
constexpr double kZ7 = 0x1.a61762a7aded9p-3;
constexpr double kZ8 = -0x1.71547652b82fep-3;

constexpr double kNearOne = 0x1p-10;
constexpr int kFractionBits = 52;
constexpr int kTableBits = 9;
constexpr std::uint64_t kFractionMask = (std::uint64_t{1} << kFractionBits) - 1;
constexpr std::uint64_t kBiasedEnd = 0x7ff;  // the exponent of infinities and NaN

constexpr std::uint64_t bitsOf(double x) { return std::bit_cast<std::uint64_t>(x); }

double withoutLast(int bits, double x) {
  return std::bit_cast<double>(bitsOf(x) & (~std::uint64_t{0} << bits));
}

double byDigits(double x) {
  int exponent = 0;
  const double half = std::frexp(x, &exponent);  // from 0.5 to below 1
  return log2ByDigits(exponent - 1,
                      static_cast<std::uint64_t>(std::ldexp(half, kFractionBits + 1)));
}

/// What z2, z3 ... z6 add to the terms in `first`.
double addQuickly(double first, double z) {
  const double z2 = z * z;
  return (first + z2 * (kZ2 + kZ3 * z)) + z2 * z2 * ((kZ4 + kZ5 * z) + z2 * kZ6);
}

/// base + low + log2(1 + zh + zl), which is the logarithm of x.
double carefully(double x, double base, double low, double zh, double zl, double bound) {
  constexpr double kToMultiple = 0x1.8p+28;  // adding it leaves multiples of 2^-24
  const double z = zh + zl;
  const double v = (zh + kToMultiple) - kToMultiple;
  const double d = (zh - v) + zl;
  const double linear = zh * kHigh;
  const double square = v * v * (-0.5 * kHigh);
  const double sum = base + linear;
  const double sumOfThree = sum + square;
  const double lost = ((base - sum) + linear) + ((sum - sumOfThree) + square);
  const double higher = kZ3 + z * (kZ4 + z * (kZ5 + z * (kZ6 + z * (kZ7 + z * kZ8))));
  const double small = (z * z * z * higher + d * (z + v) * kZ2) + (z - 0.5 * v * v) * kLow;
  const double rest = lost + (zl * kHigh + (small + low));
  const double above = sumOfThree + (rest + bound);
  const double below = sumOfThree + (rest - bound);
  return above == below ? above : byDigits(x);
}

double nearOne(double x) {
  const double z = x - 1.0;
  const double zh = withoutLast(26, z);
  const double zl = z - zh;
  const double sum = zh * kHigh;
  const double rest = addQuickly(zl * kHigh + z * kLow, z);
  const double bound = std::fabs(z) * 0x1p-60;
  const double above = sum + (rest + bound);
  const double below = sum + (rest - bound);
  return above == below ? above : carefully(x, 0.0, 0.0, zh, zl, std::fabs(z) * 0x1p-68);
}

double byTable(double x, int exponent, std::uint64_t fraction) {
  constexpr double kBound = 0x1p-68;
  const Log2TableEntry& entry = kLog2Table[fraction >> (kFractionBits - kTableBits)];
  const double m = std::bit_cast<double>(fraction | bitsOf(1.0));
  const double mh = withoutLast(27, m);
  const double zh = entry.factor * mh - 1.0;
  const double zl = entry.factor * (m - mh);
  const double z = zh + zl;
  const double base = static_cast<double>(exponent) + entry.high;
  const double linear = zh * kHigh;
  const double sum = base + linear;
  const double lost = (base - sum) + linear;
  const double rest = addQuickly(lost + ((zl * kHigh + entry.low) + z * kLow), z);
  const double above = sum + (rest + kBound);
  const double below = sum + (rest - kBound);
  return above == below ? above : carefully(x, base, entry.low, zh, zl, 0x1p-75);
}

/// Of an x that is not both positive and finite.
double outsideItsDomain(double x) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (x == 0.0) {
    return -kInfinity;
  }
  return x > 0.0 ? kInfinity : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace

double roundedLog2(double x) {
  std::uint64_t bits = bitsOf(x);
  constexpr std::uint64_t kNearOneFrom = bitsOf(1.0 - kNearOne);
  if (bits - kNearOneFrom <= bitsOf(1.0 + kNearOne) - kNearOneFrom) {
    return nearOne(x);
  }
  int bias = 1023;
  if ((bits >> kFractionBits) - 1 >= kBiasedEnd - 1) {
    if (!(x > 0.0 && x <= std::numeric_limits<double>::max())) {
      return outsideItsDomain(x);
    }
    bits = bitsOf(x * 0x1p+52);  // x was subnormal
    bias += 52;
  }
  return byTable(x, static_cast<int>(bits >> kFractionBits) - bias, bits & kFractionMask);
}

/// In u = 2^-53, z is wrong by 1 and its logarithm by 1.45; what follows adds less than 0.05 until
/// the last addition, which errs by |log2 x|.
double quickLog2(double x) {
  const std::uint64_t bits = bitsOf(x);
  const std::uint64_t exponent = bits >> kFractionBits;
  if (exponent - 1 >= kBiasedEnd - 1) {
    return roundedLog2(x);
  }
  const std::uint64_t fraction = bits & kFractionMask;
  const Log2TableEntry& entry = kLog2Table[fraction >> (kFractionBits - kTableBits)];
  const double z = entry.factor * std::bit_cast<double>(fraction | bitsOf(1.0)) - 1.0;
  const double higher = (kZ2 + kZ3 * z) + z * z * (kZ4 + kZ5 * z);
  return (static_cast<double>(static_cast<int>(exponent) - 1023) + entry.high) +
         (entry.low + z * (kZ1 + z * higher));
}

}  // namespace MCBinning
