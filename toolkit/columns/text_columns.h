/// Columns of texts, and of numbers into a list of values.
#ifndef MCBIN_TOOLKIT_COLUMNS_TEXT_COLUMNS_H
#define MCBIN_TOOLKIT_COLUMNS_TEXT_COLUMNS_H

#include <algorithm>
#include <cstring>
#include <utility>

#include "toolkit/columns/column.h"
#include "toolkit/columns/validity.h"

namespace mcbin {

/// Reads texts as the cells of a text table are read: one that reads as a number is a number.
class AnyTextColumn : public Column {
 public:
  explicit AnyTextColumn(Validity validity) : validity_(validity) {}

  CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const override {
    return validity_.Has(row) ? cells.Read(At(row), value) : CellKind::Missing;
  }
  std::string_view ReadText(std::size_t row, std::string& /*buffer*/) const override {
    return validity_.Has(row) ? At(row) : std::string_view();
  }

 private:
  virtual std::string_view At(std::size_t row) const = 0;

  Validity validity_;
};

/// Texts one after the other; the text of a row lies between its offset and the next.
template <class Offset>
class TextColumn final : public AnyTextColumn {
 public:
  TextColumn(const Offset* offsets, const char* bytes, Validity validity)
      : AnyTextColumn(validity), offsets_(offsets), bytes_(bytes) {}

 private:
  std::string_view At(std::size_t row) const override {
    return {bytes_ + offsets_[row], static_cast<std::size_t>(offsets_[row + 1] - offsets_[row])};
  }

  const Offset* offsets_;
  const char* bytes_;
};

/// Texts of up to 12 bytes inside their 16-byte view; of a longer one the view holds the length,
/// its first 4 bytes, and in which buffer it lies and where.
class TextViewColumn final : public AnyTextColumn {
 public:
  TextViewColumn(const void* views, const void* const* buffers, Validity validity)
      : AnyTextColumn(validity), views_(static_cast<const char*>(views)), buffers_(buffers) {}

 private:
  static constexpr std::size_t kViewSize = 16;
  static constexpr std::int32_t kLongestInside = 12;

  std::string_view At(std::size_t row) const override {
    const char* const view = views_ + row * kViewSize;
    const std::int32_t length = Whole(view);
    if (length <= kLongestInside) return {view + 4, static_cast<std::size_t>(length)};
    const auto* const buffer = static_cast<const char*>(buffers_[Whole(view + 8)]);
    return {buffer + Whole(view + 12), static_cast<std::size_t>(length)};
  }

  static std::int32_t Whole(const char* place) {
    std::int32_t number = 0;
    std::memcpy(&number, place, sizeof number);
    return number;
  }

  const char* views_;
  const void* const* buffers_;
};

/// Positions into a list of values. A position that is negative or beyond the list is missing.
template <class Index>
class DictionaryColumn final : public Column {
 public:
  /// The positions lie `stride` bytes apart.
  DictionaryColumn(const void* first, std::ptrdiff_t stride, Validity validity,
                   std::shared_ptr<const Column> values, std::size_t valueCount)
      : first_(static_cast<const char*>(first)),
        stride_(stride),
        validity_(validity),
        values_(std::move(values)),
        valueCount_(valueCount) {}

  CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const override {
    const std::size_t at = At(row);
    return at == valueCount_ ? CellKind::Missing : values_->ReadNumber(at, cells, value);
  }
  std::string_view ReadText(std::size_t row, std::string& buffer) const override {
    const std::size_t at = At(row);
    return at == valueCount_ ? std::string_view() : values_->ReadText(at, buffer);
  }

 private:
  /// The value's position; the number of values when there is none.
  std::size_t At(std::size_t row) const {
    if (!validity_.Has(row)) return valueCount_;
    Index index;
    std::memcpy(&index, first_ + static_cast<std::ptrdiff_t>(row) * stride_, sizeof index);
    // A negative position wraps round to one beyond every list.
    return std::min(static_cast<std::size_t>(index), valueCount_);
  }

  const char* first_;
  std::ptrdiff_t stride_;
  Validity validity_;
  std::shared_ptr<const Column> values_;
  std::size_t valueCount_;
};

/// Nothing but missing cells.
class MissingColumn final : public Column {
 public:
  CellKind ReadNumber(std::size_t, const ScaleCells&, double&) const override {
    return CellKind::Missing;
  }
  std::string_view ReadText(std::size_t, std::string&) const override { return {}; }
};

}  // namespace mcbin

#endif
