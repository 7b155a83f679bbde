#ifndef MCBINNING_MODEL_HELD_USER_MISSING_H
#define MCBINNING_MODEL_HELD_USER_MISSING_H

#include <iosfwd>
#include <memory>
#include <string>

#include "mcbinning/user_missing.h"

// The rules that all owners and readers of a user-missing definition share.
namespace MCBinning {

/// Whether `definition`, which may be null, declares `value` missing. A host's own implementation
/// of the interface has no values that can be asked for and declares nothing missing.
bool isUserMissing(const IBINUserMissing* definition, double value);
bool isUserMissing(const IBINUserMissing* definition, const std::string& value);

/// Makes `definition`, which may be null, the one in `held`; false and no change when it is of
/// another data type than `accepted`. The definition already held is answered true.
bool replaceUserMissing(std::unique_ptr<IBINUserMissing>& held, IBINUserMissing* definition,
                        IBINUserMissing::DataType accepted);

/// A clone, null for null.
std::unique_ptr<IBINUserMissing> cloneUserMissing(const IBINUserMissing* definition);

/// How an encoder shows its definition; nothing for null.
void displayUserMissing(std::ostream& os, const IBINUserMissing* definition);

}  // namespace MCBinning

#endif
