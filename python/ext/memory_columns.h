/// Tables made of objects that lie in memory: buffers of numbers, and lists of texts.
#ifndef MCBIN_PYTHON_MEMORY_COLUMNS_H
#define MCBIN_PYTHON_MEMORY_COLUMNS_H

#include <nanobind/nanobind.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/columns/column.h"
#include "toolkit/columns/validity.h"

namespace mcbin::python {

/// A borrowed buffer, which stays as it is until this object goes.
class Buffer {
 public:
  /// Of one dimension with any stride. TypeError when the object has none.
  explicit Buffer(nanobind::handle object);
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  ~Buffer() { PyBuffer_Release(&view_); }

  const void* First() const { return view_.buf; }
  std::size_t Length() const { return static_cast<std::size_t>(view_.shape[0]); }
  std::ptrdiff_t Stride() const { return view_.strides[0]; }
  /// The kind of number as the struct module names it.
  char Format() const;

 private:
  Py_buffer view_{};
};

/// Texts copied out of Python objects, end to end.
struct TextStore {
  std::vector<std::int64_t> offsets{0};
  std::string bytes;
  std::vector<std::uint8_t> isMissing;
  bool onlyNumbers = true;  ///< No cell was a text.
};

/// One batch of columns of equal length. To be built and destroyed with the interpreter lock held.
class MemoryColumns : public BatchReader {
 public:
  /// Every Add takes as many cells as the first did; ValueError otherwise.
  void AddNumbers(const std::string& name, nanobind::handle buffer, nanobind::handle mask);
  /// `codes` are positions into `values`, negative for missing.
  void AddCodes(const std::string& name, nanobind::handle codes, nanobind::list values);
  /// Strings, numbers, truth values and None.
  void AddObjects(const std::string& name, nanobind::list cells);
  void AddUnfit(const std::string& name, const std::string& why, std::size_t rows);

  const std::vector<ColumnHead>& Heads() const override { return heads_; }
  bool NextBatch(ColumnBatch& batch) override;
  void Rewind() override { atEnd_ = false; }
  std::uint64_t Rows() const override { return rows_; }
  std::unique_ptr<BatchReader> Another() override;

 private:
  using Maker = std::function<std::unique_ptr<Column>()>;

  void Add(ColumnHead head, std::size_t rows, Maker maker);
  std::shared_ptr<const Buffer> Hold(nanobind::handle object);

  std::vector<ColumnHead> heads_;
  std::vector<Maker> makers_;
  std::vector<std::shared_ptr<const Buffer>> buffers_;
  std::size_t rows_ = 0;
  bool atEnd_ = false;
};

}  // namespace mcbin::python

#endif
