/// The tables that `fit` and `show` print.
#ifndef MCBIN_TOOLKIT_TABLES_MODEL_TABLES_H
#define MCBIN_TOOLKIT_TABLES_MODEL_TABLES_H

#include <string>

#include "toolkit/model/model.h"
#include "toolkit/text/text_table.h"

namespace mcbin {

/// Header of the column by which the attributes are ranked.
inline constexpr const char* kGainOverAll = "over all";

/// The attributes by gain over all cases (in the order of the columns without a target).
TextTable rankingTable(const Model& model);

/// The bins of one attribute, and its missing and user-missing cases when there are any; with a
/// target of two categories their evidence, and the total.
TextTable binTable(const Model& model, const AttributeModel& attribute);

/// What was fitted, as lines: data, cases, weight, target.
std::string summaryText(const Model& model);
/// The same with other words in front of the data.
std::string summaryText(const Model& model, const std::string& heading);

/// How an attribute was cut: bins, distinct values, entropies.
std::string binningSummary(const AttributeModel& attribute);

/// The same behind the name of the attribute.
std::string attributeSummary(const AttributeModel& attribute);

/// What was fitted, and the attributes ranked.
std::string overviewText(const Model& model);

/// One attribute: summary line, reason when it was not cut, the table of its bins.
std::string attributeText(const Model& model, const AttributeModel& attribute);

/// The overview, then every attribute in order of rank.
std::string modelText(const Model& model);

}  // namespace mcbin

#endif
