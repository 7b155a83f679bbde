#include "python/ext/arrow_batches.h"

#include <fmt/format.h>

#include <cstring>
#include <utility>

#include "python/ext/arrow_columns.h"
#include "toolkit/errors.h"

namespace mcbin::python {
namespace nb = nanobind;
namespace {

Owned<ArrowArrayStream> takeStream(nb::handle capsule) {
  constexpr const char* kName = "arrow_array_stream";
  if (PyCapsule_IsValid(capsule.ptr(), kName) == 0) {
    throw nb::type_error("not a capsule of an Arrow array stream");
  }
  auto* const stream = static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(capsule.ptr(), kName));
  if (stream->release == nullptr) {
    throw nb::value_error("the Arrow stream was consumed before: it can be read only once");
  }
  return Owned<ArrowArrayStream>(*stream);
}

bool isSameSchema(const ArrowSchema& a, const ArrowSchema& b) {
  if (a.n_children != b.n_children) return false;
  for (std::int64_t c = 0; c < a.n_children; ++c) {
    if (std::strcmp(a.children[c]->format, b.children[c]->format) != 0) return false;
    if (headOf(*a.children[c]).name != headOf(*b.children[c]).name) return false;
  }
  return true;
}

}  // namespace

ArrowBatches::ArrowBatches(nb::callable open, StreamUse use) : open_(std::move(open)), use_(use) {
  Open();
  if (std::strcmp((*schema_)->format, "+s") != 0) {
    throw nb::type_error("the Arrow stream holds no table: its batches are no structs of columns");
  }
  for (std::int64_t c = 0; c < (*schema_)->n_children; ++c) {
    heads_.push_back(headOf(*(*schema_)->children[c]));
  }
}

ArrowBatches::ArrowBatches(const ArrowBatches& other, std::vector<Array> kept)
    : use_(StreamUse::Once), schema_(other.schema_), heads_(other.heads_), kept_(std::move(kept)) {}

std::unique_ptr<BatchReader> ArrowBatches::Another() {
  if (use_ == StreamUse::InTurn) return nullptr;
  if (use_ == StreamUse::Once) {
    return std::unique_ptr<BatchReader>(new ArrowBatches(*this, kept_));
  }
  const nb::gil_scoped_acquire lock;
  return std::make_unique<ArrowBatches>(open_, use_);
}

void ArrowBatches::Open() {
  stream_ = {};  // some producers have one stream open at a time
  stream_ = takeStream(open_());
  isUntouched_ = true;
  Owned<ArrowSchema> schema;
  Require(stream_->get_schema(&*stream_, &*schema));
  if (schema_ && !isSameSchema(**schema_, *schema)) {
    throw DataError("the columns changed while the data were read: run it again");
  }
  if (!schema_) schema_ = std::make_shared<Owned<ArrowSchema>>(std::move(schema));
}

void ArrowBatches::Require(int status) {
  if (status == 0) return;
  const char* const text = stream_->get_last_error(&*stream_);
  throw DataError(
      fmt::format("the Arrow stream failed: {}", text == nullptr ? std::strerror(status) : text));
}

ArrowBatches::Array ArrowBatches::NextArray() {
  if (!stream_.IsThere()) return nextKept_ < kept_.size() ? kept_[nextKept_++] : nullptr;
  isUntouched_ = false;
  auto array = std::make_shared<Owned<ArrowArray>>();
  Require(stream_->get_next(&*stream_, &**array));
  if (!array->IsThere()) return nullptr;
  if (use_ == StreamUse::Once) kept_.push_back(array);
  return array;
}

bool ArrowBatches::NextBatch(ColumnBatch& batch) {
  const Array array = NextArray();
  if (!array) return false;
  if ((*array)->null_count > 0) throw DataError("the Arrow stream holds rows that are null");
  batch = BatchOf(array);
  batch.firstRow = rowsRead_;
  rowsRead_ += batch.rows;
  return true;
}

ColumnBatch ArrowBatches::BatchOf(const Array& array) const {
  const ArrowArray& rows = **array;
  ColumnBatch batch;
  batch.rows = static_cast<std::size_t>(rows.length);
  for (std::int64_t c = 0; c < rows.n_children; ++c) {
    batch.columns.push_back(columnOf(*(*schema_)->children[c], *rows.children[c],
                                     static_cast<std::size_t>(rows.offset)));
  }
  batch.owner = array;
  return batch;
}

void ArrowBatches::Rewind() {
  rowsRead_ = 0;
  if (isUntouched_) return;
  if (use_ == StreamUse::Once) {
    // What was not read yet is lost unless it is kept, too.
    while (stream_.IsThere() && NextArray()) {
    }
    stream_ = {};
    nextKept_ = 0;
    return;
  }
  const nb::gil_scoped_acquire lock;
  Open();
}

}  // namespace mcbin::python
