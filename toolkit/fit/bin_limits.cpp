#include "toolkit/fit/bin_limits.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string>
#include <vector>

#include "toolkit/fit/bin_check.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

using Bins = std::vector<WeightedCounts>;

WeightedCounts joined(const WeightedCounts& a, const WeightedCounts& b) {
  WeightedCounts sum = a;
  sum.weight += b.weight;
  for (std::size_t c = 0; c < sum.classWeights.size(); ++c) {
    sum.classWeights[c] += b.classWeights[c];
  }
  return sum;
}

double weightedEntropy(const WeightedCounts& bin) {
  return bin.weight * entropyOf(bin.classWeights);
}

/// What the target's total entropy grows by when bins `lower` and `lower` + 1 become one.
double lossOfJoining(const Bins& bins, std::size_t lower) {
  return weightedEntropy(joined(bins[lower], bins[lower + 1])) -
         (weightedEntropy(bins[lower]) + weightedEntropy(bins[lower + 1]));
}

/// Which limits the bins break, one text for each.
std::vector<std::string> broken(const BinLimits& limits, const Bins& bins, double weightOfAll) {
  std::vector<std::string> texts;
  const double lightest =
      std::min_element(bins.begin(), bins.end(), [](const auto& a, const auto& b) {
        return a.weight < b.weight;
      })->weight;
  // As a quotient, which is the number that the user wrote when the bin just has that share.
  if (weightOfAll > 0.0 && lightest / weightOfAll < limits.minShare) {
    texts.push_back(fmt::format("under {:.12g}% of the weight", 100.0 * limits.minShare));
  }
  if (lightest < limits.minWeight) {
    texts.push_back("under weight " + weightText(limits.minWeight));
  }
  if (limits.maxBins > 0 && bins.size() > static_cast<std::size_t>(limits.maxBins)) {
    texts.push_back(fmt::format("more than {} bins", limits.maxBins));
  }
  return texts;
}

/// Joins the pair that loses the least; `losses` has one element for each pair.
void joinOnePair(AttributeModel& attribute, std::vector<double>& losses) {
  const auto least = std::min_element(losses.begin(), losses.end());
  const std::ptrdiff_t lower = least - losses.begin();
  Bins& bins = attribute.bins;
  const auto position = static_cast<std::size_t>(lower);
  bins[position] = joined(bins[position], bins[position + 1]);
  bins.erase(bins.begin() + lower + 1);
  attribute.cutPoints.erase(attribute.cutPoints.begin() + lower);
  losses.erase(least);
  if (position > 0) losses[position - 1] = lossOfJoining(bins, position - 1);
  if (position < losses.size()) losses[position] = lossOfJoining(bins, position);
}

void joinBins(const BinLimits& limits, AttributeModel& attribute) {
  const std::size_t before = attribute.bins.size();
  std::vector<double> losses;
  for (std::size_t lower = 0; lower + 1 < before; ++lower) {
    losses.push_back(lossOfJoining(attribute.bins, lower));
  }
  std::vector<std::string> reasons;
  while (!losses.empty()) {
    const auto now = broken(limits, attribute.bins, attribute.WeightOfAll());
    if (now.empty()) break;
    for (const std::string& reason : now) {
      if (std::find(reasons.begin(), reasons.end(), reason) == reasons.end()) {
        reasons.push_back(reason);
      }
    }
    joinOnePair(attribute, losses);
  }
  if (!reasons.empty()) {
    attribute.entropyAfter = meanEntropy(attribute.bins);
    addRemark(fmt::format("{} bins joined into {}: {}", before, attribute.bins.size(),
                          fmt::join(reasons, ", ")),
              attribute.status);
  }
  const auto left = broken(limits, attribute.bins, attribute.WeightOfAll());
  if (!left.empty()) {
    addRemark(fmt::format("one bin is left, {}", fmt::join(left, ", ")), attribute.status);
  }
}

}  // namespace

void joinBins(Model& model) {
  for (AttributeModel& attribute : model.attributes) {
    if (!attribute.cutsGiven) joinBins(model.options.limits, attribute);
  }
}

}  // namespace mcbin
