#include "toolkit/fit/bin_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

/// Sums of whole numbers are exact up to here.
constexpr double kLargestExactSum = 9'007'199'254'740'992.0;  // 2^53

void add(const WeightedCounts& counts, double sign, WeightedCounts& sum) {
  sum.weight += sign * counts.weight;
  for (std::size_t c = 0; c < sum.classWeights.size(); ++c) {
    sum.classWeights[c] += sign * counts.classWeights[c];
  }
}

/// Whether a cut point can stay behind those of `kept`; an infinite one only at its end.
bool isPossible(const std::vector<double>& cutPoints, std::size_t position,
                const std::vector<double>& kept) {
  const double cut = cutPoints[position];
  if (std::isnan(cut) || (!kept.empty() && !(cut > kept.back()))) return false;
  const auto next = cutPoints.begin() + static_cast<std::ptrdiff_t>(position) + 1;
  return std::isfinite(cut) || cut < 0.0 ||
         std::all_of(next, cutPoints.end(), [](double later) { return std::isnan(later); });
}

void noteFewerBins(int asked, AttributeModel& attribute) {
  const std::size_t found = attribute.bins.size();
  if (found == 1 || found >= static_cast<std::size_t>(asked)) return;
  addRemark(fmt::format("{} bins in place of {}: the values are too few or too unevenly spread",
                        found, asked),
            attribute.status);
}

/// The cases with a value and a category.
WeightedCounts validCases(const Model& model, const AttributeModel& attribute) {
  WeightedCounts valid = {attribute.totalWeight, {}};
  if (!model.target) return valid;
  valid.classWeights = model.target->classWeights;
  for (std::size_t c = 0; c < valid.classWeights.size(); ++c) {
    valid.classWeights[c] -=
        attribute.missingCases.classWeights[c] + attribute.userMissingCases.classWeights[c];
  }
  return valid;
}

bool mayBeRounding(double difference, const Model& model, double total) {
  return total >= kLargestExactSum &&
         std::abs(difference) <= total / kLargestExactSum * static_cast<double>(model.cases.read);
}

void fileUnbinned(const Model& model, AttributeModel& attribute) {
  const WeightedCounts valid = validCases(model, attribute);
  WeightedCounts unbinned = valid;
  for (const WeightedCounts& bin : attribute.bins) add(bin, -1.0, unbinned);
  if (!(unbinned.weight > 0.0) || mayBeRounding(unbinned.weight, model, valid.weight)) return;
  for (double& weight : unbinned.classWeights) weight = std::max(weight, 0.0);
  if (attribute.entropyBefore) attribute.entropyBefore = entropyOf(valid.classWeights);
  addRemark(fmt::format("weight {} lies in no bin", weightText(unbinned.weight)), attribute.status);
  attribute.unbinnedCases = std::move(unbinned);
}

void noteMiscounted(const Model& model, AttributeModel& attribute) {
  if (mayBeRounding(attribute.miscountedWeight, model, attribute.totalWeight)) {
    attribute.miscountedWeight = 0.0;
  }
  if (attribute.miscountedWeight == 0.0) return;
  addRemark(
      fmt::format("weight {} is counted in another bin than it lies in: a cut fell on a value",
                  weightText(attribute.miscountedWeight)),
      attribute.status);
}

}  // namespace

void addRemark(const std::string& remark, AttributeStatus& status) {
  status.severity = Severity::Warning;
  status.reason += (status.reason.empty() ? "" : "; ") + remark;
}

void dropImpossibleCuts(AttributeModel& attribute) {
  std::vector<double> cuts;
  std::vector<WeightedCounts> bins = {std::move(attribute.bins.front())};
  for (std::size_t c = 0; c < attribute.cutPoints.size(); ++c) {
    if (isPossible(attribute.cutPoints, c, cuts)) {
      cuts.push_back(attribute.cutPoints[c]);
      bins.push_back(std::move(attribute.bins[c + 1]));
    } else {
      add(attribute.bins[c + 1], 1.0, bins.back());
    }
  }
  if (cuts.size() < attribute.cutPoints.size()) {
    addRemark(std::string(cuts.empty() ? "not cut" : "a cut is left out") +
                  ": the middle of two values is no number or too large for one",
              attribute.status);
  }
  attribute.cutPoints = std::move(cuts);
  attribute.bins = std::move(bins);
}

void checkBins(Model& model) {
  for (AttributeModel& attribute : model.attributes) {
    const bool isCounted = model.method == Method::EqualFrequency && !attribute.cutsGiven;
    if (isCounted) noteFewerBins(model.options.bins, attribute);
    noteMiscounted(model, attribute);
    fileUnbinned(model, attribute);
  }
}

}  // namespace mcbin
