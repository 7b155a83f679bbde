#include "toolkit/fit/fit_request.h"

#include <cmath>

#include "toolkit/errors.h"
#include "toolkit/model/evidence.h"

namespace mcbin {

void checkNumbers(const FitRequest& request) {
  const auto isShare = [](double number) { return number >= 0.0 && number <= 1.0; };
  if (request.bins < 2) throw UsageError("--bins must be at least 2");
  if (request.distinctValueThreshold < 0) throw UsageError("--threshold must not be negative");
  if (!isShare(request.smallBinThreshold)) throw UsageError("--small-bins must be from 0 to 1");
  if (request.minBinShare && !isShare(*request.minBinShare)) {
    throw UsageError("--min-bin-share must be from 0 to 1");
  }
  const auto& weight = request.minBinWeight;
  if (weight && !(*weight >= 0.0 && std::isfinite(*weight))) {
    throw UsageError("--min-bin-weight must be finite and not negative");
  }
  if (request.maxBins && *request.maxBins < 2) throw UsageError("--max-bins must be at least 2");
  const auto& adjustment = request.evidenceAdjustment;
  if (adjustment && !isPossibleAdjustment(*adjustment)) {
    throw UsageError("--woe-adjustment must lie between 1e-100 and 1e+100");
  }
}

}  // namespace mcbin
