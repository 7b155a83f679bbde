/// Limits on bins that hold after the search.
#ifndef MCBIN_TOOLKIT_FIT_BIN_LIMITS_H
#define MCBIN_TOOLKIT_FIT_BIN_LIMITS_H

#include "toolkit/model/model.h"

namespace mcbin {

/// While an attribute breaks a limit of `model.options.limits` and has more than one bin, joins the
/// two neighbouring bins whose joining loses the least information: the least growth of the bins'
/// mean entropy; the lower pair of equals. Takes the entropy after cutting again and says in the
/// remark what was joined and why, and when one bin is left that still breaks a limit. Cut points
/// that were given stay. Nothing else of the model changes.
void joinBins(Model& model);

}  // namespace mcbin

#endif
