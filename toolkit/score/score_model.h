/// How an existing model does on other data.
#ifndef MCBIN_TOOLKIT_SCORE_SCORE_MODEL_H
#define MCBIN_TOOLKIT_SCORE_SCORE_MODEL_H

#include <optional>
#include <string>
#include <vector>

#include "toolkit/fit/case_source.h"
#include "toolkit/model/evidence.h"
#include "toolkit/model/model.h"
#include "toolkit/monitor.h"
#include "toolkit/text/choice.h"

namespace mcbin {

/// The other data and their columns.
struct ScoreRequest {
  std::optional<std::string> target;  ///< Its classes are those of the model; empty: weights only.
  std::optional<std::string> weight;  ///< Rounded as the model's is; empty: every case counts 1.
  SourceModel source = {};            ///< What the score is to call the data.
};

/// How a stability index is usually read: below 0.1, up to 0.25, above.
enum class Stability { Stable, SomeShift, LargeShift };
inline constexpr Choice<Stability> kStabilities[] = {{"stable", Stability::Stable},
                                                     {"some shift", Stability::SomeShift},
                                                     {"large shift", Stability::LargeShift}};
Stability stabilityOf(double stabilityIndex);

/// How the cases of one attribute have moved since the fit.
struct AttributeShift {
  /// Of the bins, the missing and the user-missing cases: (a - e) ln(a / e), where e and a are the
  /// row's shares of the weight in the fit and here. Where one is 0, 0.5 is added to both weights
  /// before the shares are taken. None is negative.
  std::vector<double> rowIndices;
  double stabilityIndex = 0.0;  ///< Population stability index: the sum of the above.
  double weightBelow = 0.0;     ///< Of values under the smallest that the fit saw.
  double weightAbove = 0.0;     ///< Of values over the largest.
};

struct ModelScore {
  /// The model with the counts of the other data in place of those of the fit: of cases with a
  /// class, if a target was asked for, else without classes.
  Model counted;
  std::vector<AttributeShift> shifts;  ///< By attribute.
};

/// Goes over the cases once. DataError for a column that is not there, a cell that is no number, a
/// class that the model does not know, weights that add up to infinity, and when no case can be
/// used; UsageError for a column that is to be target and weight.
ModelScore scoreModel(const Model& model, const ScoreRequest& request, CaseSource& cases,
                      Monitor& monitor);

}  // namespace mcbin

#endif
