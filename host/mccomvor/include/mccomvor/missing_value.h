#ifndef MCCOMVOR_MISSING_VALUE_H
#define MCCOMVOR_MISSING_VALUE_H

#include <mccomvor/export.h>

namespace MCMV {

/// The system-missing value of a cell, compared by plain equality. A host may choose any double
/// that is no value, weight or category code (0 to 255) of its data. NaN will not do, since it
/// equals nothing. This stand-in uses the most negative finite double.
extern MCCOMVOR_API const double gMissingValue;

}  // namespace MCMV

#endif
