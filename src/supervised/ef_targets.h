#ifndef MCBINNING_SUPERVISED_EF_TARGETS_H
#define MCBINNING_SUPERVISED_EF_TARGETS_H

#include <algorithm>
#include <cmath>

namespace MCBinning {

// Rounding makes neither the last percentage exactly 100 nor a cumulative weight exactly its
// target. The tolerances are 2^-52, the spacing of doubles from 1 on, relative to 100 and to 1.
constexpr double kPercentageTolerance = 2.220446049250313e-14;
constexpr double kWeightTolerance = 2.220446049250313e-16;

/// The cumulative weights at which the bins of an equal-frequency binning are to end.
class EFTargets {
 public:
  EFTargets(int numberOfBins, double totalWeight)
      : numberOfBins_(numberOfBins), totalWeight_(totalWeight) {}

  /// Of the bin of that number, from 0.
  double Of(int bin) const {
    const double percentage = std::min(100.0, (bin + 1) * (100.0 / numberOfBins_));
    return std::fabs(percentage - 100.0) <= kPercentageTolerance
               ? totalWeight_
               : percentage / 100.0 * totalWeight_;
  }

  static bool IsPassed(double target, double cumulative) {
    return cumulative >= target && std::fabs(cumulative - target) / cumulative >= kWeightTolerance;
  }

  static bool IsMet(double target, double cumulative) {
    return std::fabs(cumulative - target) / std::max(target, cumulative) < kWeightTolerance;
  }

 private:
  int numberOfBins_;
  double totalWeight_;
};

}  // namespace MCBinning

#endif
