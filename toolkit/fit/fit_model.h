/// From cases to a model.
#ifndef MCBIN_TOOLKIT_FIT_FIT_MODEL_H
#define MCBIN_TOOLKIT_FIT_FIT_MODEL_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/fit/case_source.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/fit_request.h"
#include "toolkit/fit/parallel_passes.h"
#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// Seconds of wall-clock time.
struct FitTimings {
  double scanning = 0.0;  ///< The first pass over the data.
  double feeding = 0.0;   ///< The second pass: reading cases for the library.
  double binning = 0.0;   ///< What the library took, its column files included.
};

/// How a fit goes on and who hears of it.
struct FitWatch {
  Monitor& monitor;
  /// Called when the plan is made and nothing is binned yet; may be empty.
  std::function<void(const std::vector<ColumnPlan>&, std::uint64_t rows,
                     const std::vector<std::string>& categories)>
      planned = {};
  /// Tell reading from binning in the second pass; costs two readings of the clock a case.
  bool timesFeed = false;
  /// Called at the end with each thing that does not fit the data, in words; may be empty.
  std::function<void(const std::string&)> noted = {};
  /// So many threads bin attributes at the same time, each from cases of its own that `another`
  /// makes. The model does not depend on it.
  std::size_t jobs = 1;
  AnotherSource another = {};
  /// Takes the place of the second pass, unless cut points are given, when it answers something;
  /// may be empty.
  std::function<std::optional<PassResult>(const PassSetting&, const FeedLayout&)> binned = {};
};

/// Goes over the cases twice, runs the library over it and gathers the model. Throws the errors of
/// errors.h. `timings` is filled as far as the run came.
Model fitModel(const FitRequest& request, CaseSource& cases, const FitWatch& watch,
               FitTimings& timings);

/// What comes after the first pass: `columns` are planned, `seen` is what the pass saw, and `bin`
/// makes the second.
Model fitScanned(const FitRequest& request, std::vector<ColumnPlan> columns, const TableScan& seen,
                 const FitWatch& watch,
                 const std::function<PassResult(const PassSetting&, const FeedLayout&)>& bin);

}  // namespace mcbin

#endif
