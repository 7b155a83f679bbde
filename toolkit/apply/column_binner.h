/// Typed columns as bin numbers.
#ifndef MCBIN_TOOLKIT_APPLY_COLUMN_BINNER_H
#define MCBIN_TOOLKIT_APPLY_COLUMN_BINNER_H

#include <cstdint>
#include <vector>

#include "toolkit/columns/column.h"
#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// The bin number of every row for each attribute of the model, in its order: 0, 1, ..., -1 for
/// missing and -2 for user-missing. DataError when a column is not there, or a cell holds a text.
std::vector<std::vector<std::int32_t>> binColumns(const Model& model, BatchReader& reader,
                                                  Monitor& monitor);

}  // namespace mcbin

#endif
