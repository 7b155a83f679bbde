#include "status/attribute_progress.h"

#include <utility>

namespace MCBinning {

AttributeProgress::AttributeProgress(ProgressListener* listener,
                                     std::function<int()> nSkippedReports)
    : listener_(listener),
      nSkippedReports_(std::move(nSkippedReports)),
      countdown_(nSkippedReports_()),
      start_(readClock()) {}

void AttributeProgress::AttributeDone(int attribute, const MCStatus& status) {
  if (listener_ == nullptr) {
    return;
  }
  const bool isDue = countdown_ < 1;
  --countdown_;
  if (isDue && !status.IsError()) {
    reporter_.SetValues(static_cast<unsigned int>(attribute), elapsedSeconds(start_));
    listener_->ReportProgress(reporter_);
    countdown_ = nSkippedReports_();
  }
}

}  // namespace MCBinning
