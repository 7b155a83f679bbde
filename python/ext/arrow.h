/// The three structs of the Arrow C data and stream interfaces, and who owns them.
#ifndef MCBIN_PYTHON_ARROW_H
#define MCBIN_PYTHON_ARROW_H

#include <cstdint>
#include <utility>

struct ArrowSchema {
  const char* format;
  const char* name;
  const char* metadata;
  std::int64_t flags;
  std::int64_t n_children;
  ArrowSchema** children;
  ArrowSchema* dictionary;
  void (*release)(ArrowSchema*);
  void* private_data;
};

struct ArrowArray {
  std::int64_t length;
  std::int64_t null_count;
  std::int64_t offset;
  std::int64_t n_buffers;
  std::int64_t n_children;
  const void** buffers;
  ArrowArray** children;
  ArrowArray* dictionary;
  void (*release)(ArrowArray*);
  void* private_data;
};

struct ArrowArrayStream {
  int (*get_schema)(ArrowArrayStream*, ArrowSchema* out);
  int (*get_next)(ArrowArrayStream*, ArrowArray* out);
  const char* (*get_last_error)(ArrowArrayStream*);
  void (*release)(ArrowArrayStream*);
  void* private_data;
};

namespace mcbin::python {

/// One of the structs, released exactly once.
template <class Struct>
class Owned {
 public:
  Owned() = default;
  /// Takes the content of `from`, which counts as released afterwards.
  explicit Owned(Struct& from) : content_(from) { from.release = nullptr; }
  Owned(Owned&& other) noexcept : content_(std::exchange(other.content_, Struct{})) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(content_, other.content_);
    return *this;
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() {
    if (content_.release != nullptr) content_.release(&content_);
  }

  Struct* operator->() { return &content_; }
  Struct& operator*() { return content_; }
  const Struct& operator*() const { return content_; }
  bool IsThere() const { return content_.release != nullptr; }

 private:
  Struct content_{};
};

}  // namespace mcbin::python

#endif
