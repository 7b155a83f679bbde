#include "toolkit/model/evidence.h"

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

}  // namespace

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
  std::vector<WeightedCounts> rows = attribute.bins;
  rows.push_back(attribute.missingCases);
  rows.push_back(attribute.userMissingCases);
  if (!attribute.unbinnedCases.classWeights.empty()) rows.push_back(attribute.unbinnedCases);
  return evidenceOf(rows, event, adjustment);
}

}  // namespace mcbin
