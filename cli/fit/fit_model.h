/// From a table to a model.
#ifndef MCBIN_FIT_FIT_MODEL_H
#define MCBIN_FIT_FIT_MODEL_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "fit/column_plan.h"
#include "fit/fit_request.h"
#include "input/table_reader.h"
#include "model/model.h"
#include "text/progress_bar.h"

namespace mcbin {

/// Seconds of wall-clock time.
struct FitTimings {
  double scanning = 0.0;  ///< The first pass over the data.
  double feeding = 0.0;   ///< The second pass: reading cases for the library.
  double binning = 0.0;   ///< What the library took, its column files included.
};

/// What happens between the passes and afterwards, for whoever watches.
struct FitWatcher {
  /// The plan is made and nothing is binned yet.
  std::function<void(const std::vector<ColumnPlan>&, std::uint64_t rows,
                     const std::vector<std::string>& categories)>
      planned;
  ProgressBar* progress = nullptr;
  bool timesFeed = false;  ///< Tell reading from binning in the second pass.
};

/// Reads the table twice, runs the library over it and gathers the model. Throws the errors of
/// errors.h. `timings` is filled as far as the run came.
Model fitModel(const FitRequest& request, TableReader& reader, const FitWatcher& watcher,
               FitTimings& timings);

}  // namespace mcbin

#endif
