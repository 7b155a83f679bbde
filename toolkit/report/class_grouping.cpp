#include "toolkit/report/class_grouping.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/input/cells.h"
#include "toolkit/model/evidence.h"

namespace mcbin {
namespace {

using Codes = std::vector<std::size_t>;

Codes codesInReadingOrder(const std::vector<std::string>& categories) {
  Codes codes(categories.size());
  std::iota(codes.begin(), codes.end(), std::size_t{0});
  std::vector<double> values;
  for (const std::string& category : categories) {
    double value = 0.0;
    if (readNumber(category, value) != NumberReading::Number) return codes;
    values.push_back(value);
  }
  std::stable_sort(codes.begin(), codes.end(),
                   [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
  return codes;
}

/// The codes of the `count` heaviest classes, in the order that `codes` has them.
Codes heaviest(const Codes& codes, const std::vector<double>& weights, std::size_t count) {
  Codes byWeight = codes;
  std::stable_sort(byWeight.begin(), byWeight.end(),
                   [&](std::size_t a, std::size_t b) { return weights[a] > weights[b]; });
  byWeight.resize(count);
  Codes kept;
  for (const std::size_t code : codes) {
    if (std::find(byWeight.begin(), byWeight.end(), code) != byWeight.end()) kept.push_back(code);
  }
  return kept;
}

/// The weights of the kept classes, and behind them the sum of the others when there are any.
std::vector<double> regrouped(const std::vector<double>& weights, const Codes& kept) {
  std::vector<double> groups;
  for (const std::size_t code : kept) groups.push_back(weights[code]);
  if (kept.size() == weights.size()) return groups;
  double others = 0.0;
  for (std::size_t code = 0; code < weights.size(); ++code) {
    if (std::find(kept.begin(), kept.end(), code) == kept.end()) others += weights[code];
  }
  groups.push_back(others);
  return groups;
}

}  // namespace

Model withReportClasses(Model model) {
  if (!model.target) return model;
  TargetModel& target = *model.target;
  const std::size_t count = target.categories.size();
  Codes kept = codesInReadingOrder(target.categories);
  if (count > kMaxReportClasses) kept = heaviest(kept, target.classWeights, kMaxReportClasses - 1);
  if (const auto event = eventOf(model)) {
    if (!target.evidence) target.evidence.emplace();
    target.evidence->event = std::string(target.categories[*event]);
  }
  std::vector<std::string> names;
  for (const std::size_t code : kept) names.push_back(target.categories[code]);
  if (kept.size() < count) names.push_back(fmt::format("{} other classes", count - kept.size()));
  target.categories = std::move(names);
  target.classWeights = regrouped(target.classWeights, kept);
  for (AttributeModel& attribute : model.attributes) {
    for (WeightedCounts& bin : attribute.bins) bin.classWeights = regrouped(bin.classWeights, kept);
    for (const CasesBesideBins& beside : kBesideBins) {
      WeightedCounts& counts = attribute.*beside.counts;
      if (!counts.classWeights.empty()) counts.classWeights = regrouped(counts.classWeights, kept);
    }
  }
  return model;
}

}  // namespace mcbin
