#include "toolkit/columns/number_columns.h"

#include <algorithm>
#include <limits>

namespace mcbin {
namespace {

__extension__ using Wide = __int128;
__extension__ using UnsignedWide = unsigned __int128;

template <class T>
Wide readWhole(const char* place) {
  T number;
  std::memcpy(&number, place, sizeof number);
  return number;
}

}  // namespace

double halfToDouble(std::uint16_t bits) {
  constexpr int kFractionBits = 10;
  constexpr int kLeastExponent = -14;
  constexpr unsigned kExponentMask = 0x1F;
  const unsigned exponent = (bits >> kFractionBits) & kExponentMask;
  const double fraction = bits & 0x3FFU;
  double magnitude = 0.0;
  if (exponent == kExponentMask) {
    magnitude = fraction == 0.0 ? std::numeric_limits<double>::infinity()
                                : std::numeric_limits<double>::quiet_NaN();
  } else if (exponent == 0) {
    magnitude = std::ldexp(fraction, kLeastExponent - kFractionBits);
  } else {
    magnitude = std::ldexp(fraction + 1024.0,
                           static_cast<int>(exponent) - 1 + kLeastExponent - kFractionBits);
  }
  return (bits & 0x8000U) != 0 ? -magnitude : magnitude;
}

CellKind AnyTruthColumn::ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const {
  if (!validity_.Has(row)) return CellKind::Missing;
  const double number = At(row) ? 1.0 : 0.0;
  const CellKind kind = cells.OfNumber(number);
  if (kind == CellKind::Number) value = number;
  return kind;
}

std::string_view AnyTruthColumn::ReadText(std::size_t row, std::string& /*buffer*/) const {
  if (!validity_.Has(row)) return {};
  return At(row) ? "true" : "false";
}

CellKind DecimalColumn::ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const {
  std::string text;
  return cells.Read(ReadText(row, text), value);
}

std::string_view DecimalColumn::ReadText(std::size_t row, std::string& buffer) const {
  if (!validity_.Has(row)) return {};
  const char* const place = first_ + row * width_;
  const Wide whole = width_ == 4   ? readWhole<std::int32_t>(place)
                     : width_ == 8 ? readWhole<std::int64_t>(place)
                                   : readWhole<Wide>(place);
  auto rest = static_cast<UnsignedWide>(whole);
  if (whole < 0) rest = -rest;
  buffer.clear();
  do {
    buffer += static_cast<char>('0' + static_cast<int>(rest % 10));
    rest /= 10;
  } while (rest != 0);
  if (scale_ < 0) {
    buffer.insert(0, static_cast<std::size_t>(-scale_), '0');
  } else if (scale_ > 0) {
    const auto decimals = static_cast<std::size_t>(scale_);
    if (buffer.size() <= decimals) buffer.append(decimals + 1 - buffer.size(), '0');
    buffer.insert(decimals, 1, '.');
  }
  if (whole < 0) buffer += '-';
  std::reverse(buffer.begin(), buffer.end());
  return buffer;
}

}  // namespace mcbin
