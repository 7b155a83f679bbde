#include "python/ext/arrow_columns.h"

#include <cstdlib>
#include <limits>
#include <string_view>

#include "toolkit/columns/number_columns.h"
#include "toolkit/columns/text_columns.h"

// Formats are named in https://arrow.apache.org/docs/format/CDataInterface.html
namespace mcbin::python {
namespace {

/// Where the cells of an array begin.
struct Start {
  const ArrowArray& array;
  std::size_t row;
  Validity validity;

  const char* At(std::size_t width) const {
    return static_cast<const char*>(array.buffers[1]) + row * width;
  }
};

Start startOf(const ArrowArray& array, std::size_t firstRow) {
  Start start{array, firstRow + static_cast<std::size_t>(array.offset), {}};
  if (array.null_count != 0 && array.n_buffers > 0) {
    start.validity.bits = static_cast<const std::uint8_t*>(array.buffers[0]);
    start.validity.firstBit = start.row;
  }
  return start;
}

template <class T>
std::unique_ptr<Column> numbers(const Start& start) {
  return std::make_unique<NumberColumn<T>>(start.At(sizeof(T)), sizeof(T), start.validity);
}

template <class Offset>
std::unique_ptr<Column> texts(const Start& start) {
  return std::make_unique<TextColumn<Offset>>(
      static_cast<const Offset*>(start.array.buffers[1]) + start.row,
      static_cast<const char*>(start.array.buffers[2]), start.validity);
}

std::unique_ptr<Column> textViews(const Start& start) {
  constexpr std::size_t kViewSize = 16;
  return std::make_unique<TextViewColumn>(start.At(kViewSize), start.array.buffers + 2,
                                          start.validity);
}

std::unique_ptr<Column> truths(const Start& start) {
  return std::make_unique<TruthBitColumn>(static_cast<const std::uint8_t*>(start.array.buffers[1]),
                                          start.row, start.validity);
}

/// "d:PRECISION,SCALE" or "d:PRECISION,SCALE,BITS".
struct DecimalFormat {
  int scale = 0;
  long bits = 128;

  explicit DecimalFormat(const char* format) {
    char* rest = nullptr;
    std::strtol(format + 2, &rest, 10);
    scale = static_cast<int>(std::strtol(rest + 1, &rest, 10));
    if (*rest == ',') bits = std::strtol(rest + 1, nullptr, 10);
  }
  bool IsRead() const { return bits == 32 || bits == 64 || bits == 128; }
};

std::unique_ptr<Column> decimals(const char* format, const Start& start) {
  constexpr long kByte = 8;
  const DecimalFormat decimal(format);
  const auto width = static_cast<std::size_t>(decimal.bits / kByte);
  return std::make_unique<DecimalColumn>(start.At(width), width, decimal.scale, start.validity);
}

template <class Index>
std::unique_ptr<Column> dictionary(const ArrowSchema& schema, const Start& start) {
  const ArrowArray& values = *start.array.dictionary;
  return std::make_unique<DictionaryColumn<Index>>(
      start.At(sizeof(Index)), sizeof(Index), start.validity,
      std::shared_ptr<const Column>(columnOf(*schema.dictionary, values, 0)),
      static_cast<std::size_t>(values.length));
}

std::unique_ptr<Column> dictionaryOf(const ArrowSchema& schema, const Start& start) {
  switch (schema.format[0]) {
    case 'c':
      return dictionary<std::int8_t>(schema, start);
    case 'C':
      return dictionary<std::uint8_t>(schema, start);
    case 's':
      return dictionary<std::int16_t>(schema, start);
    case 'S':
      return dictionary<std::uint16_t>(schema, start);
    case 'i':
      return dictionary<std::int32_t>(schema, start);
    case 'I':
      return dictionary<std::uint32_t>(schema, start);
    case 'l':
      return dictionary<std::int64_t>(schema, start);
    default:
      return dictionary<std::uint64_t>(schema, start);
  }
}

/// What a format means: numbers only, cells of another kind that can be read, or nothing.
enum class Meaning { Numbers, Readable, Unfit };

Meaning meaningOf(std::string_view format) {
  if (format.size() == 1 && std::string_view("cCsSiIlLefgbn").find(format[0]) != format.npos) {
    return Meaning::Numbers;
  }
  if (format == "u" || format == "U" || format == "vu") return Meaning::Readable;
  if (format.substr(0, 2) == "d:" && DecimalFormat(format.data()).IsRead()) {
    return Meaning::Readable;
  }
  return Meaning::Unfit;
}

/// ColumnHead::exactBelow. Decimals of 15 digits are doubles that differ.
double exactBelow(std::string_view format) {
  constexpr double kWholeDoubles = 9'007'199'254'740'992.0;  // 2^53
  constexpr int kExactDigits = 15;
  if (format == "l" || format == "L") return kWholeDoubles;
  if (meaningOf(format) == Meaning::Readable && format[0] == 'd') {
    double below = 1.0;
    const int digits = kExactDigits - DecimalFormat(format.data()).scale;
    for (int digit = 0; digit < std::abs(digits); ++digit) below *= 10.0;
    return digits < 0 ? 1.0 / below : below;
  }
  return std::numeric_limits<double>::infinity();
}

std::string_view typeName(std::string_view format) {
  if (format.substr(0, 2) == "td") return "dates";
  if (format.substr(0, 2) == "ts") return "points in time";
  if (format.substr(0, 2) == "tt") return "times of day";
  if (format.substr(0, 1) == "t") return "durations";
  if (format.substr(0, 2) == "d:") return "decimals of 256 bits";
  if (format == "z" || format == "Z" || format == "vz" || format.substr(0, 2) == "w:") {
    return "bytes";
  }
  return "lists, structs or the like";
}

std::unique_ptr<Column> wholeNumbersOf(char format, const Start& start) {
  switch (format) {
    case 'c':
      return numbers<std::int8_t>(start);
    case 'C':
      return numbers<std::uint8_t>(start);
    case 's':
      return numbers<std::int16_t>(start);
    case 'S':
      return numbers<std::uint16_t>(start);
    case 'i':
      return numbers<std::int32_t>(start);
    case 'I':
      return numbers<std::uint32_t>(start);
    case 'l':
      return numbers<std::int64_t>(start);
    case 'L':
      return numbers<std::uint64_t>(start);
    default:
      return std::make_unique<MissingColumn>();
  }
}

}  // namespace

ColumnHead headOf(const ArrowSchema& schema) {
  ColumnHead head;
  head.name = schema.name == nullptr ? "" : schema.name;
  if (schema.dictionary != nullptr) {
    const ColumnHead values = headOf(*schema.dictionary);
    head.whyUnfit = values.whyUnfit;
    head.exactBelow = values.exactBelow;
    return head;
  }
  const Meaning meaning = meaningOf(schema.format);
  head.onlyNumbers = meaning == Meaning::Numbers;
  head.exactBelow = exactBelow(schema.format);
  if (meaning == Meaning::Unfit) {
    head.whyUnfit = "it holds " + std::string(typeName(schema.format)) + ", not numbers or texts";
  }
  return head;
}

std::unique_ptr<Column> columnOf(const ArrowSchema& schema, const ArrowArray& array,
                                 std::size_t firstRow) {
  if (!headOf(schema).whyUnfit.empty()) return std::make_unique<MissingColumn>();
  const Start start = startOf(array, firstRow);
  if (schema.dictionary != nullptr) return dictionaryOf(schema, start);
  switch (schema.format[0]) {
    case 'e':
      return numbers<Half>(start);
    case 'f':
      return numbers<float>(start);
    case 'g':
      return numbers<double>(start);
    case 'b':
      return truths(start);
    case 'u':
      return texts<std::int32_t>(start);
    case 'U':
      return texts<std::int64_t>(start);
    case 'v':
      return textViews(start);
    case 'd':
      return decimals(schema.format, start);
    default:
      return wholeNumbersOf(schema.format[0], start);
  }
}

}  // namespace mcbin::python
