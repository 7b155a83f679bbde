/// What stands for a bin in data: in the cells that `apply` writes and in exported SQL.
#ifndef MCBIN_TEXT_BIN_LABELS_H
#define MCBIN_TEXT_BIN_LABELS_H

#include <cstddef>
#include <string>
#include <vector>

#include "model/bin_lookup.h"
#include "model/model.h"

namespace mcbin {

enum class LabelStyle {
  Index,     ///< 0, 1, ...; -1 for missing and -2 for user-missing.
  Interval,  ///< "(3.5, 7]"; "missing" and "user-missing".
  Bounds     ///< The lower and the upper end in two columns, both empty without a bin.
};

/// The style that a user names: index, interval or bounds.
LabelStyle labelStyleOf(const std::string& name);

/// The columns that stand for the bins of an attribute: NAME_bin, or NAME_lower and NAME_upper.
/// `inPlace`: NAME itself in place of NAME_bin.
std::vector<std::string> labelColumns(const std::string& attribute, LabelStyle style, bool inPlace);

/// Every label that an attribute can get, made once.
class BinLabels {
 public:
  BinLabels(const AttributeModel& attribute, ClosedSide side, LabelStyle style);

  /// One cell per label column.
  const std::vector<std::string>& Of(const Placement& placement) const;

 private:
  std::vector<std::vector<std::string>> bins_;
  std::vector<std::string> missing_;
  std::vector<std::string> userMissing_;
};

}  // namespace mcbin

#endif
