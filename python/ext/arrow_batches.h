/// Tables that come as Arrow streams.
#ifndef MCBIN_PYTHON_ARROW_BATCHES_H
#define MCBIN_PYTHON_ARROW_BATCHES_H

#include <nanobind/nanobind.h>

#include <memory>
#include <vector>

#include "python/ext/arrow.h"
#include "toolkit/columns/column.h"

namespace mcbin::python {

/// How often the stream of a table can be opened.
enum class StreamUse {
  Once,     ///< The batches are kept in memory from the first pass on.
  InTurn,   ///< Anew for every pass, one at a time.
  AtATime,  ///< Several at the same time.
};

/// Batches of a stream that Python opens. Built and destroyed with the interpreter lock held; the
/// other calls want it released.
class ArrowBatches : public BatchReader {
 public:
  /// `open` answers a capsule named "arrow_array_stream", whose content is taken over.
  ArrowBatches(nanobind::callable open, StreamUse use);

  const std::vector<ColumnHead>& Heads() const override { return heads_; }
  bool NextBatch(ColumnBatch& batch) override;
  void Rewind() override;
  std::uint64_t Rows() const override { return 0; }
  std::unique_ptr<BatchReader> Another() override;

 private:
  using Array = std::shared_ptr<Owned<ArrowArray>>;

  /// Of batches that are kept.
  ArrowBatches(const ArrowBatches& other, std::vector<Array> kept);

  void Open();
  void Require(int status);
  Array NextArray();
  ColumnBatch BatchOf(const Array& array) const;

  nanobind::callable open_;
  StreamUse use_;
  Owned<ArrowArrayStream> stream_;
  std::shared_ptr<Owned<ArrowSchema>> schema_;
  std::vector<ColumnHead> heads_;
  std::vector<Array> kept_;
  std::size_t nextKept_ = 0;
  std::uint64_t rowsRead_ = 0;
  bool isUntouched_ = false;  ///< No batch of the stream was read yet.
};

}  // namespace mcbin::python

#endif
