/// Columns of numbers of every width, and of truth values.
#ifndef MCBIN_TOOLKIT_COLUMNS_NUMBER_COLUMNS_H
#define MCBIN_TOOLKIT_COLUMNS_NUMBER_COLUMNS_H

#include <cmath>
#include <cstring>
#include <type_traits>

#include "toolkit/columns/column.h"
#include "toolkit/columns/validity.h"
#include "toolkit/text/number_text.h"

namespace mcbin {

/// The double nearest to the number that the bits of a half-precision number hold.
double halfToDouble(std::uint16_t bits);

/// A half-precision number as its bits.
struct Half {
  std::uint16_t bits;
};

/// Numbers `stride` bytes apart, at any alignment. NaN is missing. A whole number beyond 2^53 is
/// read as the nearest double; as a text it keeps its digits.
template <class T>
class NumberColumn : public Column {
 public:
  NumberColumn(const void* first, std::ptrdiff_t stride, Validity validity)
      : first_(static_cast<const char*>(first)), stride_(stride), validity_(validity) {}

  CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const override {
    if (!validity_.Has(row)) return CellKind::Missing;
    const double number = AsDouble(At(row));
    const CellKind kind = cells.OfNumber(number);
    if (kind == CellKind::Number) value = number;
    return kind;
  }

  std::string_view ReadText(std::size_t row, std::string& buffer) const override {
    if (!validity_.Has(row)) return {};
    const T number = At(row);
    if constexpr (std::is_integral_v<T>) {
      buffer = std::to_string(number);
    } else {
      if (std::isnan(AsDouble(number))) return {};
      buffer = shortestNumber(AsDouble(number));
    }
    return buffer;
  }

 private:
  T At(std::size_t row) const {
    T number;
    std::memcpy(&number, first_ + static_cast<std::ptrdiff_t>(row) * stride_, sizeof(T));
    return number;
  }

  static double AsDouble(T number) {
    if constexpr (std::is_same_v<T, Half>) {
      return halfToDouble(number.bits);
    } else {
      return static_cast<double>(number);
    }
  }

  const char* first_;
  std::ptrdiff_t stride_;
  Validity validity_;
};

/// Truth values: the numbers 0 and 1, the texts "false" and "true".
class AnyTruthColumn : public Column {
 public:
  explicit AnyTruthColumn(Validity validity) : validity_(validity) {}

  CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const override;
  std::string_view ReadText(std::size_t row, std::string& buffer) const override;

 private:
  virtual bool At(std::size_t row) const = 0;

  Validity validity_;
};

/// One byte each, `stride` bytes apart.
class TruthByteColumn final : public AnyTruthColumn {
 public:
  TruthByteColumn(const void* first, std::ptrdiff_t stride, Validity validity)
      : AnyTruthColumn(validity), first_(static_cast<const char*>(first)), stride_(stride) {}

 private:
  bool At(std::size_t row) const override {
    return first_[static_cast<std::ptrdiff_t>(row) * stride_] != 0;
  }

  const char* first_;
  std::ptrdiff_t stride_;
};

/// One bit each; `firstBit` is row 0.
class TruthBitColumn final : public AnyTruthColumn {
 public:
  TruthBitColumn(const std::uint8_t* bits, std::size_t firstBit, Validity validity)
      : AnyTruthColumn(validity), bits_(bits), firstBit_(firstBit) {}

 private:
  bool At(std::size_t row) const override { return bitAt(bits_, firstBit_ + row); }

  const std::uint8_t* bits_;
  std::size_t firstBit_;
};

/// Whole numbers of 4, 8 or 16 bytes, `scale` digits of which stand behind the point. A cell is
/// what its decimal text says.
class DecimalColumn : public Column {
 public:
  DecimalColumn(const void* first, std::size_t width, int scale, Validity validity)
      : first_(static_cast<const char*>(first)),
        width_(width),
        scale_(scale),
        validity_(validity) {}

  CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const override;
  std::string_view ReadText(std::size_t row, std::string& buffer) const override;

 private:
  const char* first_;
  std::size_t width_;
  int scale_;
  Validity validity_;
};

}  // namespace mcbin

#endif
