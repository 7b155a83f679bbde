/// Weight of evidence and information value of the bins of a target with two classes.
#ifndef MCBIN_TOOLKIT_MODEL_EVIDENCE_H
#define MCBIN_TOOLKIT_MODEL_EVIDENCE_H

#include <cstddef>
#include <vector>

#include "toolkit/model/model.h"

namespace mcbin {

/// What is added to both counts of a bin in which one of the classes does not occur.
inline constexpr double kEvidenceAdjustment = 0.5;

/// One bin. Of a bin without weight all three are 0.
struct Evidence {
  double eventRate = 0.0;  ///< Share of the event's weight in the bin.
  /// Weight of evidence: ln((n / N) / (e / E)) with the bin's weight n of non-events and e of
  /// events, and their totals N and E over all rows. Positive where events are rarer than overall.
  /// Where n or e is 0, the adjustment is added to both; the totals stay.
  double weightOfEvidence = 0.0;
  double informationValue = 0.0;  ///< (n / N - e / E) times the weight of evidence.
};

/// Evidence of every row, and the information value in total.
struct EvidenceTable {
  std::vector<Evidence> rows;
  double informationValue = 0.0;  ///< Sum over the rows, in their order.
};

/// `rows` holds the weights of two classes each. `event` is the code of the event. Every row is
/// without evidence when a class has no weight at all.
EvidenceTable evidenceOf(const std::vector<WeightedCounts>& rows, std::size_t event,
                         double adjustment = kEvidenceAdjustment);

/// The bins of the attribute, then its missing, its user-missing and, where there are any, its
/// unbinned cases.
EvidenceTable evidenceOf(const AttributeModel& attribute, std::size_t event,
                         double adjustment = kEvidenceAdjustment);

}  // namespace mcbin

#endif
