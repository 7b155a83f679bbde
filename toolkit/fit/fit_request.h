/// What the user asks `fit` to do.
#ifndef MCBIN_TOOLKIT_FIT_FIT_REQUEST_H
#define MCBIN_TOOLKIT_FIT_FIT_REQUEST_H

#include <optional>
#include <string>
#include <vector>

#include "toolkit/fit/given_cuts.h"
#include "toolkit/input/open_table.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// Pre-bins of an attribute with more distinct values than the threshold, when not given.
inline constexpr int kDefaultPreBins = 1000;
/// Bins of an equal-frequency run, when not given.
inline constexpr int kDefaultEqualFrequencyBins = 10;

struct FitRequest {
  InputOptions input;
  Method method = Method::Supervised;
  ClosedSide closedSide = ClosedSide::Right;
  std::optional<std::string> target;  ///< Column name or number; there exactly when supervised.
  std::optional<std::string> weight;
  WeightRounding rounding = WeightRounding::Truncate;
  int bins = kDefaultPreBins;
  int distinctValueThreshold = 0;
  double smallBinThreshold = 0.0;
  std::optional<double> minBinShare;  ///< Limits on bins: supervised only.
  std::optional<double> minBinWeight;
  std::optional<int> maxBins;
  std::optional<std::string> event;  ///< A category of a target that has two.
  std::optional<double> evidenceAdjustment;
  std::vector<std::string> naTexts;
  std::vector<std::string> attributePatterns;  ///< Empty: every column.
  std::vector<std::string> excludePatterns;
  std::vector<std::string> types;  ///< COLUMN=scale or COLUMN=category
  std::vector<GivenCuts> cuts;
  std::vector<std::string> missing;        ///< COLUMN=VALUE[,VALUE...]
  std::vector<std::string> targetMissing;  ///< More of the target, each as it stands.
  std::vector<std::string> missingRanges;  ///< COLUMN=LOW:HIGH
};

/// UsageError for a number that cannot be; no data need be read to say so.
void checkNumbers(const FitRequest& request);

}  // namespace mcbin

#endif
