/// Arrow arrays as columns.
#ifndef MCBIN_PYTHON_ARROW_COLUMNS_H
#define MCBIN_PYTHON_ARROW_COLUMNS_H

#include <memory>

#include "python/ext/arrow.h"
#include "toolkit/columns/column.h"

namespace mcbin::python {

/// What is known of a column from its schema.
ColumnHead headOf(const ArrowSchema& schema);

/// The cells of `array` from row `firstRow` on, which are borrowed. An array of a type that is
/// neither numbers nor texts gives nothing but missing cells.
std::unique_ptr<Column> columnOf(const ArrowSchema& schema, const ArrowArray& array,
                                 std::size_t firstRow);

}  // namespace mcbin::python

#endif
