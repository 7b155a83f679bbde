/// From a table that need not fit in memory to a model.
#ifndef MCBIN_TOOLKIT_ROUNDS_FIT_BATCHES_H
#define MCBIN_TOOLKIT_ROUNDS_FIT_BATCHES_H

#include <cstdint>

#include "toolkit/columns/column.h"
#include "toolkit/fit/fit_model.h"

namespace mcbin {

/// As fitModel, by `watch.jobs` threads in rounds when the table has at least `roundsFrom` rows.
/// `batches` must stand in front of the first.
Model fitBatches(const FitRequest& request, BatchReader& batches, FitWatch watch,
                 std::uint64_t roundsFrom, FitTimings& timings);

}  // namespace mcbin

#endif
