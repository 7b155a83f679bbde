/// Cells of one type as they lie in memory.
#ifndef MCBIN_TOOLKIT_COLUMNS_COLUMN_H
#define MCBIN_TOOLKIT_COLUMNS_COLUMN_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/input/cells.h"

namespace mcbin {

/// A stretch of one column. Its cells are read where they lie and are not owned.
class Column {
 public:
  Column() = default;
  Column(const Column&) = delete;
  Column& operator=(const Column&) = delete;
  virtual ~Column() = default;

  /// What the cell says; `cells` knows the texts that stand for a missing value. `value` is set
  /// only for Number.
  virtual CellKind ReadNumber(std::size_t row, const ScaleCells& cells, double& value) const = 0;

  /// The cell as a text, empty when it is missing. Good until the next call; may lie in `buffer`.
  virtual std::string_view ReadText(std::size_t row, std::string& buffer) const = 0;
};

/// Rows of all columns. What the columns point to lives as long as `owner`.
struct ColumnBatch {
  std::size_t rows = 0;
  std::uint64_t firstRow = 0;  ///< How many rows of the table are before it.
  std::vector<std::unique_ptr<Column>> columns;
  std::shared_ptr<const void> owner;
};

/// What is known of a column before its first row.
struct ColumnHead {
  std::string name;
  std::string whyUnfit;  ///< Not empty for a type that is neither numbers nor texts.
  bool onlyNumbers = false;
  /// Cells of at least this magnitude may differ and still be the same double.
  double exactBelow = std::numeric_limits<double>::infinity();
};

/// A table in batches of rows, front to back as often as wanted. Failures are exceptions.
class BatchReader {
 public:
  BatchReader() = default;
  BatchReader(const BatchReader&) = delete;
  BatchReader& operator=(const BatchReader&) = delete;
  virtual ~BatchReader() = default;

  /// Names are distinct, none empty.
  virtual const std::vector<ColumnHead>& Heads() const = 0;
  /// Replaces `batch` by the next one, which may have no rows; false at the end.
  virtual bool NextBatch(ColumnBatch& batch) = 0;
  virtual void Rewind() = 0;
  /// Of all batches; 0 when it is not known.
  virtual std::uint64_t Rows() const = 0;
  /// Another reader of the same table, in front of its first batch, that is used at the same time
  /// on another thread and goes first; null when the table can be read only by one. To be called
  /// after Rewind.
  virtual std::unique_ptr<BatchReader> Another() { return nullptr; }
};

}  // namespace mcbin

#endif
