/// The tables that `fit` and `show` print.
#ifndef MCBIN_TEXT_MODEL_TABLES_H
#define MCBIN_TEXT_MODEL_TABLES_H

#include <string>

#include "model/model.h"

namespace mcbin {

/// What was fitted, and the attributes ranked by information gain.
std::string overviewText(const Model& model);

/// One attribute: summary line, reason when it was not cut, the table of its bins.
std::string attributeText(const Model& model, const AttributeModel& attribute);

/// The overview, then every attribute in order of rank.
std::string modelText(const Model& model);

}  // namespace mcbin

#endif
