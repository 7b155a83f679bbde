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

namespace mcbin {

/// Columns of the other data.
struct ScoreRequest {
  std::optional<std::string> target;  ///< Its classes are those of the model; empty: weights only.
  std::optional<std::string> weight;  ///< Rounded as the model's is; empty: every case counts 1.
};

/// One attribute of the model on the other data.
struct AttributeScore {
  /// The bins, then the missing and the user-missing cases; of cases with a class, if asked for.
  std::vector<WeightedCounts> rows;
  /// Of the cases in the bins, in bits; empty without a target.
  std::optional<double> informationGain;
  /// Of the rows, as the model asks; empty without a target of two categories.
  std::optional<EvidenceTable> evidence;
  /// Population stability index: the sum over the rows of (a - e) ln(a / e), where e and a are the
  /// row's shares of the weight in the fit and here. Where one is 0, 0.5 is added to both weights.
  double stabilityIndex = 0.0;
};

struct ModelScore {
  CaseCounts cases;
  std::vector<AttributeScore> attributes;  ///< In the order of the model.
};

/// Goes over the cases once. DataError for a column that is not there, a cell that is no number, a
/// class that the model does not know, and when no case can be used.
ModelScore scoreModel(const Model& model, const ScoreRequest& request, CaseSource& cases,
                      Monitor& monitor);

}  // namespace mcbin

#endif
