#ifndef MCBINNING_API_VERSION_BANNER_H
#define MCBINNING_API_VERSION_BANNER_H

namespace MCBinning {

/// What GetVersion() of both algorithms returns.
inline constexpr char kVersionBanner[] =
    "Supervised Binning Component Ver. 1.0 (entropy and EF binning)";

}  // namespace MCBinning

#endif
