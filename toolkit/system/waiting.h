/// Waiting for a descriptor without growing deaf.
#ifndef MCBIN_TOOLKIT_SYSTEM_WAITING_H
#define MCBIN_TOOLKIT_SYSTEM_WAITING_H

#include "toolkit/monitor.h"

namespace mcbin {

/// Both come back when reading (writing up to a page) will not block, or will say what is wrong.
/// The monitor is asked before and then five times a second: a wish to stop is heard however it
/// falls between a question and the wait.
void waitToRead(int descriptor, Monitor& monitor);
void waitToWrite(int descriptor, Monitor& monitor);

/// The same pause for what cannot be waited for; the monitor is asked after it.
void pauseAndAsk(Monitor& monitor);

}  // namespace mcbin

#endif
