#include "status/attribute_progress.h"

namespace MCBinning {

AttributeProgress::AttributeProgress(ProgressListener* listener, int nSkippedReports)
    : listener_(listener), countdown_(nSkippedReports), start_(ReadClock()) {}

void AttributeProgress::AttributeDone(int attribute, const MCStatus& status, int nSkippedReports) {
  if (listener_ == nullptr) {
    return;
  }
  const bool isDue = countdown_ < 1;
  --countdown_;
  if (isDue && !status.IsError()) {
    reporter_.SetValues(static_cast<unsigned int>(attribute), ElapsedSeconds(start_));
    listener_->ReportProgress(reporter_);
    countdown_ = nSkippedReports;
  }
}

}  // namespace MCBinning
