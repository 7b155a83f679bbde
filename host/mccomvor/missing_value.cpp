#include <mccomvor/missing_value.h>

#include <limits>

namespace MCMV {

const double gMissingValue = std::numeric_limits<double>::lowest();

}  // namespace MCMV
