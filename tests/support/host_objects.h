#ifndef MCBINNING_TESTS_SUPPORT_HOST_OBJECTS_H
#define MCBINNING_TESTS_SUPPORT_HOST_OBJECTS_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <vector>

#include "mcbinning/progress.h"

namespace mcbinning_tests {

/// Answers true from its n-th question on (from 1; 0 for never), calls a hook for each, and can
/// throw at one instead.
class CountingQuery : public MCQueryCancel {
 public:
  explicit CountingQuery(std::size_t trueFrom = 0) : trueFrom_(trueFrom) {}

  bool IsCancelled() override {
    ++asked_;
    if (asked_ == throwAt_) {
      throw std::runtime_error("the host failed");
    }
    if (hook) {
      hook();
    }
    return trueFrom_ != 0 && asked_ >= trueFrom_;
  }

  void ThrowAt(std::size_t question) { throwAt_ = question; }
  std::size_t Asked() const { return asked_; }

  std::function<void()> hook;

 private:
  std::size_t trueFrom_;
  std::size_t throwAt_ = 0;
  std::size_t asked_ = 0;
};

/// Keeps the measures of every report, calls a hook for each, and can throw at one.
class RecordingListener : public ProgressListener {
 public:
  void ReportProgress(ProgressReport& report) override {
    indexes.push_back(report.DiscreteMeasure("IndexVar"));
    elapsed.push_back(report.ScaleMeasure("elapsedTime"));
    if (indexes.size() == throwAt) {
      throw std::runtime_error("the host failed");
    }
    if (hook) {
      hook();
    }
  }

  std::vector<int> indexes;
  std::vector<double> elapsed;
  std::size_t throwAt = 0;  // the number of the report, from 1
  std::function<void()> hook;
};

}  // namespace mcbinning_tests

#endif
