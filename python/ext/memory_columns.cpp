#include "python/ext/memory_columns.h"

#include <fmt/format.h>

#include <utility>

#include "python/ext/object_texts.h"
#include "toolkit/columns/number_columns.h"
#include "toolkit/columns/text_columns.h"

namespace mcbin::python {
namespace nb = nanobind;
namespace {

template <class T>
std::unique_ptr<Column> numbers(const Buffer& buffer, const Validity& validity) {
  return std::make_unique<NumberColumn<T>>(buffer.First(), buffer.Stride(), validity);
}

/// Null for a format that is no number.
std::unique_ptr<Column> numbersOf(const Buffer& buffer, const Validity& validity) {
  switch (buffer.Format()) {
    case 'b':
      return numbers<signed char>(buffer, validity);
    case 'B':
      return numbers<unsigned char>(buffer, validity);
    case 'h':
      return numbers<short>(buffer, validity);
    case 'H':
      return numbers<unsigned short>(buffer, validity);
    case 'i':
      return numbers<int>(buffer, validity);
    case 'I':
      return numbers<unsigned>(buffer, validity);
    case 'l':
      return numbers<long>(buffer, validity);
    case 'L':
      return numbers<unsigned long>(buffer, validity);
    case 'q':
      return numbers<long long>(buffer, validity);
    case 'Q':
      return numbers<unsigned long long>(buffer, validity);
    case 'e':
      return numbers<Half>(buffer, validity);
    case 'f':
      return numbers<float>(buffer, validity);
    case 'd':
      return numbers<double>(buffer, validity);
    case '?':
      return std::make_unique<TruthByteColumn>(buffer.First(), buffer.Stride(), validity);
    default:
      return nullptr;
  }
}

template <class Index>
std::unique_ptr<Column> codes(const Buffer& buffer, std::shared_ptr<const Column> values,
                              std::size_t count) {
  return std::make_unique<DictionaryColumn<Index>>(buffer.First(), buffer.Stride(), Validity(),
                                                   std::move(values), count);
}

std::unique_ptr<Column> codesOf(const Buffer& buffer, std::shared_ptr<const Column> values,
                                std::size_t count) {
  switch (buffer.Format()) {
    case 'b':
      return codes<signed char>(buffer, std::move(values), count);
    case 'h':
      return codes<short>(buffer, std::move(values), count);
    case 'i':
      return codes<int>(buffer, std::move(values), count);
    case 'l':
      return codes<long>(buffer, std::move(values), count);
    case 'q':
      return codes<long long>(buffer, std::move(values), count);
    default:
      return nullptr;
  }
}

std::unique_ptr<Column> textsOf(const TextStore& store) {
  return std::make_unique<TextColumn<std::int64_t>>(store.offsets.data(), store.bytes.data(),
                                                    Validity{nullptr, 0, store.isMissing.data()});
}

}  // namespace

Buffer::Buffer(nb::handle object) {
  if (PyObject_GetBuffer(object.ptr(), &view_, PyBUF_STRIDES | PyBUF_FORMAT) != 0) {
    throw nb::python_error();
  }
  if (view_.ndim == 1) return;
  PyBuffer_Release(&view_);
  throw nb::value_error("a column must have one dimension");
}

char Buffer::Format() const {
  const std::string_view format = view_.format == nullptr ? "B" : view_.format;
  if (format.size() == 2 && (format[0] == '@' || format[0] == '=')) return format[1];
  return format.size() == 1 ? format[0] : '\0';
}

void MemoryColumns::Add(ColumnHead head, std::size_t rows, Maker maker) {
  if (!heads_.empty() && rows != rows_) {
    throw nb::value_error(
        fmt::format("column {} has {} rows, those before it have {}", head.name, rows, rows_)
            .c_str());
  }
  rows_ = rows;
  heads_.push_back(std::move(head));
  makers_.push_back(std::move(maker));
}

std::shared_ptr<const Buffer> MemoryColumns::Hold(nb::handle object) {
  buffers_.push_back(std::make_shared<const Buffer>(object));
  return buffers_.back();
}

void MemoryColumns::AddNumbers(const std::string& name, nb::handle buffer, nb::handle mask) {
  const auto numbers = Hold(buffer);
  Validity validity;
  if (!mask.is_none()) {
    const auto held = Hold(mask);
    if (held->Length() != numbers->Length() || held->Stride() != 1) {
      throw nb::value_error("a mask has one byte for each number");
    }
    validity.mask = static_cast<const std::uint8_t*>(held->First());
  }
  if (!numbersOf(*numbers, validity)) {
    throw nb::type_error(fmt::format("column {} holds no numbers", name).c_str());
  }
  Add({name, "", true}, numbers->Length(),
      [numbers, validity] { return numbersOf(*numbers, validity); });
}

void MemoryColumns::AddCodes(const std::string& name, nb::handle codes, nb::list values) {
  const auto held = Hold(codes);
  const auto store = std::make_shared<const TextStore>(textsOfObjects(values, name));
  const std::shared_ptr<const Column> texts = textsOf(*store);
  const std::size_t count = store->isMissing.size();
  if (!codesOf(*held, texts, count)) {
    throw nb::type_error(fmt::format("column {} holds no codes", name).c_str());
  }
  Add({name, "", store->onlyNumbers}, held->Length(),
      [held, store, texts, count] { return codesOf(*held, texts, count); });
}

void MemoryColumns::AddObjects(const std::string& name, nb::list cells) {
  const auto store = std::make_shared<const TextStore>(textsOfObjects(cells, name));
  Add({name, "", store->onlyNumbers}, store->isMissing.size(), [store] { return textsOf(*store); });
}

void MemoryColumns::AddUnfit(const std::string& name, const std::string& why, std::size_t rows) {
  Add({name, why, false}, rows, [] { return std::make_unique<MissingColumn>(); });
}

std::unique_ptr<BatchReader> MemoryColumns::Another() {
  auto another = std::make_unique<MemoryColumns>();
  another->heads_ = heads_;
  another->makers_ = makers_;
  another->rows_ = rows_;
  return another;
}

bool MemoryColumns::NextBatch(ColumnBatch& batch) {
  if (std::exchange(atEnd_, true)) return false;
  batch = {};
  batch.rows = rows_;
  for (const Maker& make : makers_) batch.columns.push_back(make());
  return true;
}

}  // namespace mcbin::python
