#ifndef MCCOMVOR_MISSING_VALUE_H
#define MCCOMVOR_MISSING_VALUE_H

#include <mccomvor/export.h>

namespace MCMV {

/// The system-missing value of scale cells, compared by plain equality. A host may choose any
/// double; this stand-in uses the most negative finite one.
extern MCCOMVOR_API const double gMissingValue;

}  // namespace MCMV

#endif
