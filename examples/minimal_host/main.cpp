/// The smallest host of the binning library: a progress listener and the status of a step.
#include <mcbinning/progress.h>
#include <mcbinning/status.h>

#include <iostream>

namespace {

class PrintingListener : public ProgressListener {
 public:
  void ReportProgress(ProgressReport& report) override {
    std::cout << report.DiscreteMeasure("IndexVar") << " cases in "
              << report.ScaleMeasure("elapsedTime") << " s\n";
  }
};

}  // namespace

int main() {
  BINProgressReporter report;
  report.SetValues(100000, 0.25);
  PrintingListener listener;
  listener.ReportProgress(report);

  const MCBinning::MCStatus status;
  std::cout << (status.IsOK() ? "done\n" : "failed\n");
  return status.IsOK() ? 0 : 1;
}
