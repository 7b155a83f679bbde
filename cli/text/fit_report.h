/// What `fit` tells on standard error about how it understood the data.
#ifndef MCBIN_CLI_TEXT_FIT_REPORT_H
#define MCBIN_CLI_TEXT_FIT_REPORT_H

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/fit_model.h"

namespace mcbin {

/// How many cases there are, which columns are cut, the target, the weight, and which columns are
/// left out and why.
std::string planText(const std::vector<ColumnPlan>& columns, const std::string& data,
                     std::uint64_t rows, const std::vector<std::string>& categories);

/// The lines of --timings.
std::string timingsText(const FitTimings& timings, double writing);

}  // namespace mcbin

#endif
