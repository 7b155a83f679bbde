/// The report of a model: one page of HTML.
#ifndef MCBIN_TOOLKIT_REPORT_REPORT_PAGE_H
#define MCBIN_TOOLKIT_REPORT_REPORT_PAGE_H

#include <string>

#include "toolkit/model/model.h"

namespace mcbin {

/// A whole document that needs no script and no other file: what was fitted, the attributes by
/// gain over all cases, and a section with charts and a table for each.
std::string reportPage(const Model& model);

}  // namespace mcbin

#endif
