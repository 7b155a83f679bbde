#ifndef MCBIN_TOOLKIT_SYSTEM_WINDOWS_LAST_ERROR_H
#define MCBIN_TOOLKIT_SYSTEM_WINDOWS_LAST_ERROR_H

namespace mcbin {

/// Sets errno to what comes nearest to the system's last error.
void setErrnoFromLastError();

}  // namespace mcbin

#endif
