/// The second pass over the data: the library bins attributes, and a model takes in what it found.
#ifndef MCBIN_TOOLKIT_FIT_BINNING_PASS_H
#define MCBIN_TOOLKIT_FIT_BINNING_PASS_H

#include <string>
#include <vector>

#include "toolkit/fit/case_feed.h"
#include "toolkit/fit/case_source.h"
#include "toolkit/fit/column_plan.h"
#include "toolkit/fit/fit_request.h"
#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// What a model calls the data of `input`.
SourceModel sourceOf(const InputOptions& input);

/// What passes over the same data share. Everything is borrowed.
struct PassSetting {
  const FitRequest& request;
  const std::vector<ColumnPlan>& columns;
  const TableScan& scan;
  bool timesFeed = false;
};

struct PassResult {
  Model model;
  Notes neverMet;            ///< CaseFeed::NeverMet.
  double feedSeconds = 0.0;  ///< CaseFeed::Seconds.
};

/// Everything of the model that is known before anything is binned.
Model plannedModel(const PassSetting& setting, const FeedLayout& layout);

/// Goes over the cases, in front of the first of which `cases` stands, and bins the attributes of
/// the layout. DataError, too, when there are not as many cases as the scan saw.
PassResult runPass(const PassSetting& setting, const FeedLayout& layout, CaseSource& cases,
                   Monitor& monitor);

/// The data were not the same in all passes.
[[noreturn]] void failChanged(const PassSetting& setting);

}  // namespace mcbin

#endif
