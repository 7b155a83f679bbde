/// Keeping other people's text out of the results.
#ifndef MCBIN_CLI_SYSTEM_MUTED_OUTPUT_H
#define MCBIN_CLI_SYSTEM_MUTED_OUTPUT_H

namespace mcbin {

/// While it lives nothing comes out of standard output, where the library reports a lost file.
class MutedStandardOutput {
 public:
  /// DataError when the descriptors for it cannot be had.
  MutedStandardOutput();
  MutedStandardOutput(const MutedStandardOutput&) = delete;
  MutedStandardOutput& operator=(const MutedStandardOutput&) = delete;
  ~MutedStandardOutput();

  /// Ends it now; DataError when standard output cannot be had back.
  void End();

 private:
  bool Restore();

  int kept_;  ///< Standard output as it was; negative once it is back.
};

}  // namespace mcbin

#endif
