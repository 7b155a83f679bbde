#include "toolkit/fit/case_count.h"

#include <algorithm>

namespace mcbin {

AttributeModel withoutCases(const AttributeModel& attribute, std::size_t classes) {
  const WeightedCounts none{0.0, std::vector<double>(classes, 0.0)};
  AttributeModel empty;
  empty.name = attribute.name;
  empty.missing = attribute.missing;
  empty.cutPoints = attribute.cutPoints;
  empty.cutsGiven = attribute.cutsGiven;
  empty.bins.assign(attribute.cutPoints.size() + 1, none);
  empty.missingCases = empty.userMissingCases = none;
  return empty;
}

Placement countCase(AttributeModel& attribute, ClosedSide side, std::optional<double> value,
                    std::optional<std::size_t> code, double weight) {
  const Placement placement = place(attribute, side, value);
  WeightedCounts& counts = placement.kind == Placement::Kind::Bin ? attribute.bins[placement.bin]
                           : placement.kind == Placement::Kind::Missing
                               ? attribute.missingCases
                               : attribute.userMissingCases;
  counts.weight += weight;
  if (code) counts.classWeights[*code] += weight;
  attribute.totalWeightWithMissing += weight;
  if (placement.kind != Placement::Kind::Bin) return placement;
  attribute.totalWeight += weight;
  attribute.minimum = std::min(attribute.minimum.value_or(*value), *value);
  attribute.maximum = std::max(attribute.maximum.value_or(*value), *value);
  return placement;
}

void DistinctValues::Add(double value) {
  values_.push_back(value);
  if (values_.size() < most_) return;
  DropRepeated();
  most_ = std::max(most_, 2 * values_.size());
}

std::size_t DistinctValues::Count() {
  DropRepeated();
  return values_.size();
}

void DistinctValues::DropRepeated() {
  std::sort(values_.begin(), values_.end());
  values_.erase(std::unique(values_.begin(), values_.end()), values_.end());
}

}  // namespace mcbin
