#include "toolkit/model/evidence.h"

#include <algorithm>
#include <numbers>

#include "numerics/log2.h"

namespace mcbin {
namespace {

struct Totals {
  double events = 0.0;
  double nonEvents = 0.0;
};

Evidence evidenceOfRow(double events, double nonEvents, const Totals& totals, double adjustment) {
  Evidence evidence;
  const double weight = events + nonEvents;
  if (weight == 0.0) return evidence;
  evidence.eventRate = events / weight;
  if (totals.events == 0.0 || totals.nonEvents == 0.0) return evidence;
  const double difference = nonEvents / totals.nonEvents - events / totals.events;
  const double added = events == 0.0 || nonEvents == 0.0 ? adjustment : 0.0;
  // ln 2 times the base-2 logarithm, which is the same to the last bit on every platform.
  evidence.weightOfEvidence =
      std::numbers::ln2 * MCBinning::roundedLog2(((nonEvents + added) / totals.nonEvents) /
                                                 ((events + added) / totals.events));
  evidence.informationValue = difference * evidence.weightOfEvidence;
  return evidence;
}

std::vector<WeightedCounts> rowsOf(const AttributeModel& attribute) {
  std::vector<WeightedCounts> rows = attribute.bins;
  rows.push_back(attribute.missingCases);
  rows.push_back(attribute.userMissingCases);
  if (!attribute.unbinnedCases.classWeights.empty()) rows.push_back(attribute.unbinnedCases);
  return rows;
}

}  // namespace

std::optional<std::size_t> eventOf(const Model& model) {
  if (!model.target || model.target->categories.size() != 2) return std::nullopt;
  const TargetModel& target = *model.target;
  return target.evidence && target.evidence->event == target.categories[0] ? 0 : 1;
}

EvidenceTable evidenceOf(const std::vector<WeightedCounts>& rows, std::size_t event,
                         double adjustment) {
  const std::size_t nonEvent = 1 - event;
  Totals totals;
  for (const WeightedCounts& row : rows) {
    totals.events += row.classWeights[event];
    totals.nonEvents += row.classWeights[nonEvent];
  }
  EvidenceTable table;
  for (const WeightedCounts& row : rows) {
    table.rows.push_back(
        evidenceOfRow(row.classWeights[event], row.classWeights[nonEvent], totals, adjustment));
    table.informationValue += table.rows.back().informationValue;
  }
  return table;
}

EvidenceTable evidenceOf(const AttributeModel& attribute, std::size_t event, double adjustment) {
  return evidenceOf(rowsOf(attribute), event, adjustment);
}

std::optional<EvidenceTable> evidenceOf(const Model& model, const AttributeModel& attribute) {
  return evidenceOf(model, rowsOf(attribute));
}

std::optional<EvidenceTable> evidenceOf(const Model& model,
                                        const std::vector<WeightedCounts>& rows) {
  const std::optional<std::size_t> event = eventOf(model);
  if (!event) return std::nullopt;
  const auto& options = model.target->evidence;
  return evidenceOf(rows, *event, options ? options->adjustment : kEvidenceAdjustment);
}

Trend trendOf(const AttributeModel& attribute, const EvidenceTable& evidence) {
  std::vector<double> rates;
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    if (attribute.bins[bin].weight > 0.0) rates.push_back(evidence.rows[bin].eventRate);
  }
  rates.erase(std::unique(rates.begin(), rates.end()), rates.end());
  if (rates.size() < 2) return Trend::None;
  const bool startsUp = rates[0] < rates[1];
  std::size_t turns = 0;
  for (std::size_t bin = 2; bin < rates.size(); ++bin) {
    if ((rates[bin - 2] < rates[bin - 1]) != (rates[bin - 1] < rates[bin])) ++turns;
  }
  if (turns > 1) return Trend::None;
  if (turns == 1) return startsUp ? Trend::Peak : Trend::Valley;
  return startsUp ? Trend::Rising : Trend::Falling;
}

}  // namespace mcbin
