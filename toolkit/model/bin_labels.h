/// What stands for a bin in data: in the cells that `apply` writes and in exported SQL.
#ifndef MCBIN_TOOLKIT_MODEL_BIN_LABELS_H
#define MCBIN_TOOLKIT_MODEL_BIN_LABELS_H

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/model/bin_lookup.h"
#include "toolkit/model/model.h"
#include "toolkit/text/choice.h"

namespace mcbin {

/// "(-inf, 3.5]", "(3.5, 7]", "(7, inf)"; with Left "[3.5, 7)". A model without cut points has the
/// one bin "(-inf, inf)".
std::string intervalText(const std::vector<double>& cutPoints, ClosedSide side, std::size_t bin);

enum class LabelStyle {
  Index,     ///< 0, 1, ...; -1 for missing and -2 for user-missing.
  Interval,  ///< "(3.5, 7]"; "missing" and "user-missing".
  Evidence,  ///< The weight of evidence, of the missing cases too.
  Bounds     ///< The lower and the upper end in two columns, both empty without a bin.
};

inline constexpr Choice<LabelStyle> kLabelStyles[] = {{"index", LabelStyle::Index},
                                                      {"interval", LabelStyle::Interval},
                                                      {"woe", LabelStyle::Evidence},
                                                      {"bounds", LabelStyle::Bounds}};

/// The columns that stand for the bins of an attribute: NAME_bin, NAME_woe, or NAME_lower and
/// NAME_upper. `inPlace`: NAME itself in place of the first two.
std::vector<std::string> labelColumns(const std::string& attribute, LabelStyle style, bool inPlace);

/// Every label that an attribute can get, made once.
class BinLabels {
 public:
  /// DataError for Evidence unless the target has two categories.
  BinLabels(const Model& model, const AttributeModel& attribute, LabelStyle style);

  /// One cell per label column.
  const std::vector<std::string>& Of(const Placement& placement) const;

 private:
  void TakeEvidence(const Model& model, const AttributeModel& attribute);

  std::vector<std::vector<std::string>> bins_;
  std::vector<std::string> missing_;
  std::vector<std::string> userMissing_;
};

}  // namespace mcbin

#endif
