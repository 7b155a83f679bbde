/// Which classes of the target a report tells apart.
#ifndef MCBIN_TOOLKIT_REPORT_CLASS_GROUPING_H
#define MCBIN_TOOLKIT_REPORT_CLASS_GROUPING_H

#include <cstddef>

#include "toolkit/model/model.h"

namespace mcbin {

/// As many classes as a reader can tell apart in one bar.
inline constexpr std::size_t kMaxReportClasses = 10;

/// The model with its classes in the order to show them (by value when every category is a number,
/// else as they are) and at most kMaxReportClasses of them: of more, the heaviest stay and the last
/// one, "N other classes", sums up the rest. A model without a target stays as it is.
Model withReportClasses(Model model);

}  // namespace mcbin

#endif
