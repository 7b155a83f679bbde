/// A model as SQL.
#ifndef MCBIN_EXPORT_SQL_EXPORT_H
#define MCBIN_EXPORT_SQL_EXPORT_H

#include <optional>
#include <string>

#include "model/model.h"
#include "text/bin_labels.h"

namespace mcbin {

/// One CASE expression per attribute, named as its label columns are and separated by commas, to be
/// put into a SELECT; with `table` the whole SELECT over that table. A value is tested for missing
/// first, then for user-missing, then against the cut points in ascending order. The columns must
/// hold numbers or NULL. LabelStyle::Index or LabelStyle::Interval.
std::string modelToSql(const Model& model, LabelStyle style,
                       const std::optional<std::string>& table);

}  // namespace mcbin

#endif
