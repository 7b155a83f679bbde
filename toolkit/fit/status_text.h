/// The library's status codes in plain words.
#ifndef MCBIN_TOOLKIT_FIT_STATUS_TEXT_H
#define MCBIN_TOOLKIT_FIT_STATUS_TEXT_H

#include <mcbinning/status.h>

#include <string>

#include "toolkit/model/model.h"

namespace mcbin {

/// How the binning of one attribute ended.
AttributeStatus attributeStatus(const MCBinning::MCStatus& status);

/// Throws what the error of a whole run amounts to: DataError or, for what a right host never
/// meets, std::runtime_error. Returns for OK and for warnings.
void throwIfRunFailed(const MCBinning::MCStatus& status);

}  // namespace mcbin

#endif
