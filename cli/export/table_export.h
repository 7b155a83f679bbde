/// The tables of a model for other programs.
#ifndef MCBIN_EXPORT_TABLE_EXPORT_H
#define MCBIN_EXPORT_TABLE_EXPORT_H

#include <string>

#include "model/model.h"

namespace mcbin {

/// One line per bin of every attribute, and one for its missing and one for its user-missing cases:
/// attribute, bin (a number from 0, "missing" or "user-missing"), lower, upper, closed ("right" or
/// "left"), weight, and weight_CATEGORY for every category of the target.
std::string modelToCsv(const Model& model);

/// The tables that `show` prints, as Markdown.
std::string modelToMarkdown(const Model& model);

}  // namespace mcbin

#endif
