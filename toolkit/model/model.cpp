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

const AttributeModel* findAttribute(const Model& model, const std::string& name) {
  for (const AttributeModel& attribute : model.attributes) {
    if (attribute.name == name) return &attribute;
  }
  return nullptr;
}

std::vector<std::size_t> rankByInformationGain(const Model& model) {
  std::vector<std::size_t> order(model.attributes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return model.attributes[a].InformationGain() > model.attributes[b].InformationGain();
  });
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

std::vector<double> sumOverBins(const std::vector<WeightedCounts>& bins) {
  std::vector<double> sums;
  for (const WeightedCounts& bin : bins) {
    sums.resize(std::max(sums.size(), bin.classWeights.size()), 0.0);
    for (std::size_t c = 0; c < bin.classWeights.size(); ++c) sums[c] += bin.classWeights[c];
  }
  return sums;
}

}  // namespace mcbin
