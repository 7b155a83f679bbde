#ifndef MCBINNING_STATUS_ATTRIBUTE_PROGRESS_H
#define MCBINNING_STATUS_ATTRIBUTE_PROGRESS_H

#include <cstdint>
#include <functional>

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
  /// `nSkippedReports` is asked now and after every report, in which the host may change it.
  AttributeProgress(ProgressListener* listener, std::function<int()> nSkippedReports);

  /// To be called after the step of each attribute, with the step's status.
  void AttributeDone(int attribute, const MCStatus& status);

 private:
  ProgressListener* listener_;
  std::function<int()> nSkippedReports_;
  std::int64_t countdown_;  // goes on below 0 while steps fail
  ClockReading start_;
  BINProgressReporter reporter_;
};

}  // namespace MCBinning

#endif
