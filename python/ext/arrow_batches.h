/// Tables that come as Arrow streams.
#ifndef MCBIN_PYTHON_ARROW_BATCHES_H
#define MCBIN_PYTHON_ARROW_BATCHES_H

#include <nanobind/nanobind.h>

#include <memory>
#include <vector>

#include "python/ext/arrow.h"
#include "toolkit/columns/column.h"

namespace mcbin::python {

/// Batches of a stream that Python opens anew for every pass, or, of one that can be read only
/// once, kept in memory from the first pass on. Built and destroyed with the interpreter lock held;
/// the other calls want it released.
class ArrowBatches : public BatchReader {
 public:
  /// `open` answers a capsule named "arrow_array_stream", whose content is taken over.
  ArrowBatches(nanobind::callable open, bool keep);

  const std::vector<ColumnHead>& Heads() const override { return heads_; }
  bool NextBatch(ColumnBatch& batch) override;
  void Rewind() override;
  std::uint64_t Rows() const override { return 0; }

 private:
  using Array = std::shared_ptr<Owned<ArrowArray>>;

  void Open();
  void Require(int status);
  Array NextArray();
  ColumnBatch BatchOf(const Array& array) const;

  nanobind::callable open_;
  bool keep_;
  Owned<ArrowArrayStream> stream_;
  std::shared_ptr<Owned<ArrowSchema>> schema_;
  std::vector<ColumnHead> heads_;
  std::vector<Array> kept_;
  std::size_t nextKept_ = 0;
  bool isUntouched_ = false;  ///< No batch of the stream was read yet.
};

}  // namespace mcbin::python

#endif
