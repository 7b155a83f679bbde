#include "toolkit/report/attribute_charts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "toolkit/model/bin_labels.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kLongestLabel = 17;
constexpr std::size_t kShortNumber = 6;
constexpr double kNarrowestShare = 0.01;

/// Minimum, cut points, maximum: the edges of the bins as the data fill them.
std::vector<double> edgesOf(const AttributeModel& attribute) {
  std::vector<double> edges = {attribute.minimum.value_or(NAN)};
  edges.insert(edges.end(), attribute.cutPoints.begin(), attribute.cutPoints.end());
  edges.push_back(attribute.maximum.value_or(NAN));
  return edges;
}

std::string tooltipOf(const Model& model, const std::string& name, const WeightedCounts& counts,
                      double total) {
  std::string text =
      fmt::format("{}: {} ({})", name, weightText(counts.weight), shareText(counts.weight, total));
  if (!model.target) return text;
  for (std::size_t c = 0; c < counts.classWeights.size(); ++c) {
    text +=
        fmt::format("; {} {} ({})", model.target->categories[c], weightText(counts.classWeights[c]),
                    shareText(counts.classWeights[c], counts.weight));
  }
  return text;
}

/// "≤ 25", "(25, 32]", "> 57", as short as the bins of a chart need it; "bin 3" when that is long.
std::string labelOf(const std::vector<std::string>& cuts, ClosedSide side, std::size_t bin) {
  const bool right = side == ClosedSide::Right;
  if (cuts.empty()) return "all values";
  std::string label;
  if (bin == 0) {
    label = (right ? "\u2264 " : "< ") + cuts.front();
  } else if (bin == cuts.size()) {
    label = (right ? "> " : "\u2265 ") + cuts.back();
  } else {
    label = (right ? "(" : "[") + cuts[bin - 1] + ", " + cuts[bin] + (right ? "]" : ")");
  }
  return label.size() > kLongestLabel ? fmt::format("bin {}", bin) : label;
}

std::vector<double> classSharesOf(const WeightedCounts& counts) {
  double total = 0.0;
  for (const double weight : counts.classWeights) total += weight;
  std::vector<double> shares;
  if (!(total > 0.0)) return shares;
  for (const double weight : counts.classWeights) shares.push_back(weight / total);
  return shares;
}

std::string describe(const Model& model, const AttributeModel& attribute) {
  const auto heaviest = std::max_element(
      attribute.bins.begin(), attribute.bins.end(),
      [](const WeightedCounts& a, const WeightedCounts& b) { return a.weight < b.weight; });
  const auto bin = static_cast<std::size_t>(heaviest - attribute.bins.begin());
  return fmt::format(
      "{} bin{}, the heaviest is {} with {} of the weight. The table has every number.",
      attribute.bins.size(), attribute.bins.size() == 1 ? "" : "s",
      intervalText(attribute.cutPoints, model.closedSide, bin),
      shareText(heaviest->weight, attribute.WeightOfAll()));
}

/// Bars whose area is the weight.
void addBarsToScale(const AttributeModel& attribute, Histogram& histogram) {
  const std::vector<double> edges = edgesOf(attribute);
  const double range = edges.back() - edges.front();
  double highest = 0.0;
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    Histogram::Bar bar;
    bar.left = (edges[bin] - edges.front()) / range;
    bar.right = (edges[bin + 1] - edges.front()) / range;
    bar.height = attribute.bins[bin].weight / (bar.right - bar.left);
    highest = std::max(highest, bar.height);
    histogram.bars.push_back(bar);
  }
  if (!(highest > 0.0)) return;
  for (Histogram::Bar& bar : histogram.bars) bar.height /= highest;
}

/// Bars of one width whose height is the weight.
void addEqualBars(const AttributeModel& attribute, Histogram& histogram) {
  double heaviest = 0.0;
  for (const WeightedCounts& bin : attribute.bins) heaviest = std::max(heaviest, bin.weight);
  const auto count = static_cast<double>(attribute.bins.size());
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    const auto position = static_cast<double>(bin);
    Histogram::Bar bar;
    bar.left = position / count;
    bar.right = (position + 1.0) / count;
    bar.height = heaviest > 0.0 ? attribute.bins[bin].weight / heaviest : 0.0;
    histogram.bars.push_back(bar);
  }
}

void addMarks(const AttributeModel& attribute, Histogram& histogram) {
  const auto addEnd = [&](double at, const std::optional<double>& value) {
    if (value) histogram.marks.push_back({at, shortTexts({*value}).front(), false});
  };
  const std::vector<std::string> cuts = shortTexts(attribute.cutPoints);
  for (std::size_t cut = 0; cut < cuts.size(); ++cut) {
    histogram.marks.push_back({histogram.bars[cut].right, cuts[cut], true});
  }
  addEnd(0.0, attribute.minimum);
  addEnd(1.0, attribute.maximum);
}

}  // namespace

std::vector<std::string> shortTexts(const std::vector<double>& numbers) {
  constexpr int kFewestDigits = 4;
  constexpr int kMostDigits = 17;
  std::vector<std::string> texts(numbers.size());
  for (int digits = kFewestDigits; digits <= kMostDigits; ++digits) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      texts[i] = shortestNumber(numbers[i]);
      if (texts[i].size() > kShortNumber) texts[i] = fmt::format("{:.{}g}", numbers[i], digits);
    }
    if (std::adjacent_find(texts.begin(), texts.end()) == texts.end()) break;
  }
  return texts;
}

bool hasDrawableWidths(const AttributeModel& attribute) {
  const std::vector<double> edges = edgesOf(attribute);
  const double range = edges.back() - edges.front();
  if (!std::isfinite(range)) return false;
  const double narrowest =
      range * std::min(kNarrowestShare, 0.1 / static_cast<double>(attribute.bins.size()));
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    const double width = edges[bin + 1] - edges[bin];
    if (!(width > 0.0 && width >= narrowest)) return false;
  }
  return true;
}

Histogram histogramOf(const Model& model, const AttributeModel& attribute, const std::string& id) {
  Histogram histogram;
  histogram.names = {id, "Distribution of " + attribute.name, describe(model, attribute)};
  if (hasDrawableWidths(attribute)) {
    addBarsToScale(attribute, histogram);
  } else {
    addEqualBars(attribute, histogram);
  }
  const double total = attribute.WeightOfAll();
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    const WeightedCounts& counts = attribute.bins[bin];
    histogram.bars[bin].label = shareText(counts.weight, total);
    histogram.bars[bin].tooltip =
        tooltipOf(model, intervalText(attribute.cutPoints, model.closedSide, bin), counts, total);
  }
  addMarks(attribute, histogram);
  return histogram;
}

ShareChart shareChartOf(const Model& model, const AttributeModel& attribute,
                        const std::string& id) {
  ShareChart chart;
  chart.names = {id,
                 (model.target ? "Weights and class shares of the bins of " : "Bin weights of ") +
                     attribute.name,
                 describe(model, attribute)};
  chart.weightHeading = "weight";
  if (model.target) chart.classHeading = "class shares";
  const double total = attribute.WeightOfAll();
  double heaviest = 0.0;
  for (const auto& [_, member] : kBesideBins) {
    heaviest = std::max(heaviest, (attribute.*member).weight);
  }
  for (const WeightedCounts& bin : attribute.bins) heaviest = std::max(heaviest, bin.weight);
  const auto addRow = [&](const std::string& label, const std::string& name,
                          const WeightedCounts& counts, bool setApart) {
    chart.rows.push_back({label, heaviest > 0.0 ? counts.weight / heaviest : 0.0,
                          shareText(counts.weight, total), classSharesOf(counts), setApart,
                          tooltipOf(model, name, counts, total)});
  };
  const std::vector<std::string> cuts = shortTexts(attribute.cutPoints);
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    addRow(labelOf(cuts, model.closedSide, bin),
           intervalText(attribute.cutPoints, model.closedSide, bin), attribute.bins[bin], false);
  }
  for (const auto& [name, member] : kBesideBins) {
    const WeightedCounts& counts = attribute.*member;
    if (counts.weight > 0.0) addRow(name, name, counts, true);
  }
  return chart;
}

}  // namespace mcbin
