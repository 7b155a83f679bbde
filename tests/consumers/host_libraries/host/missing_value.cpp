#include <mccomvor/missing_value.h>

namespace MCMV {

const double gMissingValue = -9999.0;

}  // namespace MCMV
