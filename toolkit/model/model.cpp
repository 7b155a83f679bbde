#include "toolkit/model/model.h"

#include <algorithm>
#include <numeric>

#include "numerics/log2.h"

namespace mcbin {

bool MissingRules::Contains(double value) const {
  if (std::find(values.begin(), values.end(), value) != values.end()) return true;
  return range && range->first <= value && value <= range->second;
}

double AttributeModel::InformationGain() const {
  if (cutPoints.empty() || !entropyBefore || !entropyAfter) return 0.0;
  return *entropyBefore - *entropyAfter;
}

double AttributeModel::GainOverAllCases() const {
  std::vector<WeightedCounts> rows = bins;
  for (const CasesBesideBins& beside : kBesideBins) rows.push_back(this->*beside.counts);
  const std::vector<double> sums = sumOverBins(rows);
  const double total = std::accumulate(sums.begin(), sums.end(), 0.0);
  if (!(total > 0.0)) return 0.0;
  double after = 0.0;
  for (const WeightedCounts& row : rows) after += row.weight / total * entropyOf(row.classWeights);
  return std::max(entropyOf(sums) - after, 0.0);
}

double AttributeModel::WeightOfAll() const {
  return totalWeight + missingCases.weight + userMissingCases.weight;
}

const AttributeModel* findAttribute(const Model& model, const std::string& name) {
  for (const AttributeModel& attribute : model.attributes) {
    if (attribute.name == name) return &attribute;
  }
  return nullptr;
}

std::vector<std::size_t> rankByGain(const Model& model) {
  std::vector<double> gains;
  for (const AttributeModel& attribute : model.attributes) {
    gains.push_back(attribute.GainOverAllCases());
  }
  std::vector<std::size_t> order(gains.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return gains[a] > gains[b]; });
  return order;
}

double entropyOf(const std::vector<double>& classWeights) {
  const double total = std::accumulate(classWeights.begin(), classWeights.end(), 0.0);
  if (total == 0.0) return 0.0;
  double entropy = 0.0;
  for (double weight : classWeights) {
    const double p = weight / total;
    if (p != 0.0) entropy -= p * MCBinning::roundedLog2(p);
  }
  return entropy;
}

double meanEntropy(const std::vector<WeightedCounts>& bins) {
  double weight = 0.0;
  double sum = 0.0;
  for (const WeightedCounts& bin : bins) {
    weight += bin.weight;
    sum += bin.weight * entropyOf(bin.classWeights);
  }
  return weight > 0.0 ? sum / weight : 0.0;
}

std::vector<double> sumOverBins(const std::vector<WeightedCounts>& bins) {
  std::vector<double> sums;
  for (const WeightedCounts& bin : bins) {
    sums.resize(std::max(sums.size(), bin.classWeights.size()), 0.0);
    for (std::size_t c = 0; c < bin.classWeights.size(); ++c) sums[c] += bin.classWeights[c];
  }
  return sums;
}

}  // namespace mcbin
