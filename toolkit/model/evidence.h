/// Weight of evidence and information value of the bins of a target with two classes.
#ifndef MCBIN_TOOLKIT_MODEL_EVIDENCE_H
#define MCBIN_TOOLKIT_MODEL_EVIDENCE_H

#include <cstddef>
#include <optional>
#include <vector>

#include "toolkit/model/model.h"
#include "toolkit/text/choice.h"

namespace mcbin {

/// What is added to both counts of a bin in which one of the classes does not occur, unless asked
/// otherwise.
inline constexpr double kEvidenceAdjustment = 0.5;

/// Whether the evidence stays finite with it; beyond, quotients of counts might not.
inline bool isPossibleAdjustment(double adjustment) {
  return adjustment >= 1e-100 && adjustment <= 1e100;
}

/// The code of the event: the category that the model names, by default the last. Empty unless the
/// target has two categories.
std::optional<std::size_t> eventOf(const Model& model);

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

/// The same as the model asks; empty unless the target has two categories.
std::optional<EvidenceTable> evidenceOf(const Model& model, const AttributeModel& attribute);
std::optional<EvidenceTable> evidenceOf(const Model& model,
                                        const std::vector<WeightedCounts>& rows);

/// How the event rate goes from bin to bin. Bins without weight, and neighbours with equal rates,
/// change nothing.
enum class Trend { None, Rising, Falling, Peak, Valley };
inline constexpr Choice<Trend> kTrends[] = {{"none", Trend::None},
                                            {"rising", Trend::Rising},
                                            {"falling", Trend::Falling},
                                            {"peak", Trend::Peak},
                                            {"valley", Trend::Valley}};

/// `evidence` is that of the attribute. None, too, when the rate turns more than once.
Trend trendOf(const AttributeModel& attribute, const EvidenceTable& evidence);

}  // namespace mcbin

#endif
