#ifndef MCBINNING_TESTS_SUPPORT_REAL_FILES_H
#define MCBINNING_TESTS_SUPPORT_REAL_FILES_H

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <string>

#include "platform/file_claim.h"
#include "platform/file_system.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {

inline MCBinning::FileSystem& files() { return MCBinning::realFileSystem(); }

/// A file of 4 bytes, closed again.
inline MCBinning::CreateResult makeOurs(const MCBinning::FileClaim& claim,
                                        const std::string& name) {
  MCBinning::FileHandle handle = MCBinning::kNoFile;
  const MCBinning::CreateResult result = files().Create(name, claim, handle);
  if (result == MCBinning::CreateResult::Created) {
    EXPECT_TRUE(files().Write(handle, "ours", 4));
    EXPECT_TRUE(files().Close(handle));
  }
  return result;
}

/// The system's own files, in a directory for one test.
class RealFilesTest : public testing::Test {
 protected:
  ~RealFilesTest() override { directory_.Clear(); }

  std::string Prefix() const { return directory_.Path() + "/"; }
  std::string Name(const std::string& file) const { return Prefix() + file; }

  /// A file of 6 bytes.
  std::string MakeTheirs(const std::string& file) const {
    std::ofstream(Name(file)) << "theirs";
    return Name(file);
  }

  std::size_t NumberOfEntries() const { return directory_.Entries().size(); }

  ScratchDirectory directory_;
};

}  // namespace mcbinning_tests

#endif
