#ifndef MCBINNING_STATUS_ATTRIBUTE_PROGRESS_H
#define MCBINNING_STATUS_ATTRIBUTE_PROGRESS_H

#include <cstdint>

#include "mcbinning/progress.h"
#include "mcbinning/status.h"
#include "platform/cpu_clock.h"

namespace MCBinning {

/// Tells the host's listener how far a loop over attributes has come: with s skipped reports it
/// hears of the attribute after s others, then again after every further s. An attribute whose step
/// failed is never reported; the next one that did not fail is reported in its place.
class AttributeProgress {
 public:
  /// Starts the phase whose duration is reported. `listener` is borrowed and may be null.
  AttributeProgress(ProgressListener* listener, int nSkippedReports);

  /// To be called after the step of each attribute, with the step's status; a report makes the
  /// countdown start again at `nSkippedReports`.
  void AttributeDone(int attribute, const MCStatus& status, int nSkippedReports);

 private:
  ProgressListener* listener_;
  std::int64_t countdown_;  // goes on below 0 while steps fail
  ClockReading start_;
  BINProgressReporter reporter_;
};

}  // namespace MCBinning

#endif
