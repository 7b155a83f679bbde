#ifndef MCBINNING_API_MAKE_ALGORITHM_H
#define MCBINNING_API_MAKE_ALGORITHM_H

#include <memory>

class BINSettings;
class BINVarList;
class EFBINSettings;
class IBINAlgorithm;
class IEFBINAlgorithm;

namespace MCBinning {

// Each is defined beside its algorithm, so that the factories need no header of a higher layer.
// The algorithm copies settings and list; an exception of a copy passes through.
std::unique_ptr<IBINAlgorithm> makeBINAlgorithm(BINSettings& settings, BINVarList& varList);
std::unique_ptr<IEFBINAlgorithm> makeEFBINAlgorithm(EFBINSettings& settings, BINVarList& varList);

}  // namespace MCBinning

#endif
