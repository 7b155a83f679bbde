#ifndef MCBINNING_PLATFORM_FILE_CLAIM_H
#define MCBINNING_PLATFORM_FILE_CLAIM_H

#include <string>

#include "platform/file_system.h"

namespace MCBinning {

// How the real file systems keep claims, a POSIX and a Windows variant of each function.
//
// A claim is a directory beside the files, locked as long as a process has it open, in which every
// file of the claim has a second link. So the lock tells whether the files are still in use, and
// the links tell them from files of others that have such a name by chance. A file comes into being
// in the claim and is linked to its name afterwards: at no time is there one that nobody can tell.

/// As FileSystem::MakeClaim.
bool makeClaimDirectory(const std::string& prefix, FileClaim& claim);

/// Creates a file, open for appending, in the claim and under `name`. Failed also where a file
/// cannot have two links; nothing is left then.
CreateResult createInClaim(const FileClaim& claim, const std::string& name, FileHandle& file);

/// Removes the file at `name`, when it is the claim's, and the claim's link. False when the file is
/// still there or the claim has no link of it.
bool removeFromClaim(const FileClaim& claim, const std::string& name) noexcept;

/// As FileSystem::DropClaim.
void dropClaimDirectory(FileClaim& claim, bool isOwner) noexcept;

/// As FileSystem::RemoveAbandoned.
void removeAbandonedClaims(const std::string& prefix) noexcept;

}  // namespace MCBinning

#endif
