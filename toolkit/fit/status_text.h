/// The library's status codes in plain words.
#ifndef MCBIN_TOOLKIT_FIT_STATUS_TEXT_H
#define MCBIN_TOOLKIT_FIT_STATUS_TEXT_H

#include <mcbinning/status.h>

#include <string>

#include "toolkit/model/model.h"

namespace mcbin {

/// How the binning of one attribute ended that did not end in error.
AttributeStatus attributeStatus(const MCBinning::MCStatus& status);

/// Throws what the error of the attribute `name` amounts to: DataError or, for what a right host
/// never meets, std::runtime_error. `filesAreWhole` tells whether the run's temporary files are as
/// long as they must be, `reason` is the errno behind the error, 0 when it is not known. Returns
/// for OK and for warnings.
void throwIfAttributeFailed(const MCBinning::MCStatus& status, const std::string& name,
                            bool filesAreWhole, int reason);

/// Throws what the error of a whole run amounts to: DataError or, for what a right host never
/// meets, std::runtime_error. `reason` is as above. Returns for OK and for warnings.
void throwIfRunFailed(const MCBinning::MCStatus& status, int reason);

}  // namespace mcbin

#endif
