/// What the library's rules leave odd about bins: found, mended where it must be, and said.
#ifndef MCBIN_TOOLKIT_FIT_BIN_CHECK_H
#define MCBIN_TOOLKIT_FIT_BIN_CHECK_H

#include "toolkit/model/model.h"

namespace mcbin {

/// Makes the status a warning that says `remark`, too.
void addRemark(const std::string& remark, AttributeStatus& status);

/// Makes one bin of those on either side of a cut point that is no number, or not above the one
/// before, and says so: such is the middle of -inf and inf, or of two values near the largest
/// double.
void dropImpossibleCuts(AttributeModel& attribute);

/// Goes over a model that is filled but for `unbinnedCases`, and adds to the attributes' remarks:
/// - bins count cases that lie in other bins;
/// - cases with a value and a category that no bin counts are filed as unbinned;
/// - there are fewer bins of equal frequency than were asked for.
void checkBins(Model& model);

}  // namespace mcbin

#endif
