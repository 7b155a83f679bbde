#include <mcbinning/settings.h>
#include <mcbinning/user_missing.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "fuzz/check.h"
#include "fuzz/list_comparison.h"
#include "fuzz/list_steps.h"
#include "support/host_objects.h"

namespace fuzz {

namespace {

struct SettingsModel {
  int attributeReports = 0;
  int caseReports = 100000;
  int bins = -1;
  int threshold = -1;
  double smallBins = 0.0;
  bool closed = true;
  std::string directory;
  ProgressListener* listener = nullptr;
  MCQueryCancel* query = nullptr;

  bool IsEqualTo(const SettingsModel& other) const {
    return attributeReports == other.attributeReports && caseReports == other.caseReports &&
           bins == other.bins && threshold == other.threshold && closed == other.closed;
  }
};

// What only the supervised algorithm's settings have.
void stepOfThresholds(Input& input, BINSettings& settings, SettingsModel& model) {
  if (input.Flag()) {
    const int threshold = input.Flag() ? input.AnyInt() : input.Between(-1, 3);
    check(settings.SetNumDistinctValueThreshold(threshold) == (threshold >= 0), "threshold");
    model.threshold = threshold >= 0 ? threshold : model.threshold;
  } else {
    const double smallBins = input.Flag() ? input.Number() : input.Below(3) / 2.0;
    const bool isGood = smallBins >= 0.0 && smallBins <= 1.0;
    check(settings.SetSmallBinDetectionThreshold(smallBins) == isGood, "small bins");
    model.smallBins = isGood ? smallBins : model.smallBins;
  }
}

void stepOfThresholds(Input& /*input*/, EFBINSettings& /*settings*/, SettingsModel& /*model*/) {}

void compareThresholds(const BINSettings& settings, const SettingsModel& model) {
  check(settings.GetNumDistinctValueThreshold() == model.threshold, "same threshold");
  check(isSame(settings.GetSmallBinDetectionThreshold(), model.smallBins), "same small bins");
}

void compareThresholds(const EFBINSettings& /*settings*/, const SettingsModel& /*model*/) {}

template <typename Settings>
void compareSettings(Settings& settings, const SettingsModel& model) {
  check(settings.GetNSkippedAttReports() == model.attributeReports, "same attribute reports");
  check(settings.GetNSkippedCasesReports() == model.caseReports, "same case reports");
  check(settings.GetNumberOfBins() == model.bins, "same bins");
  check(settings.IsRightBorderClosed() == model.closed, "same border");
  check(settings.GetTempDirName() == model.directory, "same directory");
  check(settings.GetProgressListener() == model.listener, "same listener");
  check(settings.GetCancelPointer() == model.query, "same query");
  compareThresholds(settings, model);
}

template <typename Settings>
void stepOfSettings(Input& input, Settings& settings, SettingsModel& model) {
  static mcbinning_tests::RecordingListener listener;
  static mcbinning_tests::CountingQuery query;
  const int number = input.Flag() ? input.AnyInt() : input.Between(-1, 3);
  switch (input.Below(8)) {
    case 0:
      check(settings.SetNSkippedAttReports(number) == (number >= 0), "attribute reports");
      model.attributeReports = number >= 0 ? number : model.attributeReports;
      return;
    case 1:
      check(settings.SetNSkippedCasesReports(number) == (number >= 0), "case reports");
      model.caseReports = number >= 0 ? number : model.caseReports;
      return;
    case 2:
      check(settings.SetNumberOfBins(number) == (number >= 2), "bins");
      model.bins = number >= 2 ? number : model.bins;
      return;
    case 3:
      model.closed = input.Flag();
      return settings.SetRightBorderClosed(model.closed);
    case 4:
      model.directory = input.Text();
      return settings.SetTempDirName(model.directory);
    case 5:
      model.listener = input.Flag() ? &listener : nullptr;
      return settings.SetProgressListener(model.listener);
    case 6:
      model.query = input.Flag() ? &query : nullptr;
      return settings.SetCancelPointer(model.query);
    default:
      return stepOfThresholds(input, settings, model);
  }
}

template <typename Settings>
void stepsOf(Input& input) {
  Settings left;
  Settings right;
  SettingsModel leftModel;
  leftModel.directory = left.GetTempDirName();
  SettingsModel rightModel = leftModel;
  for (int steps = input.Below(24); steps > 0; --steps) {
    switch (input.Below(8)) {
      case 0:
        left = right;
        leftModel = rightModel;
        break;
      case 1: {
        const Settings& self = left;
        left = self;
        break;
      }
      case 2: {
        const Settings copy(left);
        check(displayed(copy) == displayed(left) && copy == left, "copy of settings");
        break;
      }
      case 3:
        stepOfSettings(input, right, rightModel);
        break;
      default:
        stepOfSettings(input, left, leftModel);
    }
    compareSettings(left, leftModel);
    compareSettings(right, rightModel);
    check((left == right) == leftModel.IsEqualTo(rightModel), "equal settings");
  }
}

void stepsOfNumericInterval(Input& input) {
  double left = input.Number();
  double right = input.Number();
  BINNumericInterval interval(left, right);
  if (input.Flag()) {
    left = input.Number();
    check(interval.SetLeftEnd(left) == (left <= right), "set the left end");
  }
  if (input.Flag()) {
    right = input.Number();
    check(interval.SetRightEnd(right) == (left <= right), "set the right end");
  }
  const double value = input.Number();
  check(interval.Contains(value) == (left <= value && value <= right), "interval contains");
  check(interval.IsEmpty() == (left > right), "interval is empty");
  check(interval.IsLeftEndInfinite() == (left == -std::numeric_limits<double>::max()),
        "left end is infinite");
  check(interval.IsRightEndInfinite() == (right == std::numeric_limits<double>::max()),
        "right end is infinite");
  const bool upTo = input.Flag();
  check(BINNumericInterval(left, upTo).Contains(value) ==
            (upTo ? value <= left && value >= -std::numeric_limits<double>::max()
                  : value >= left && value <= std::numeric_limits<double>::max()),
        "interval to infinity contains");
  const BINNumericInterval copy = interval;
  check((copy == interval) == (left == left && right == right), "a NaN equals nothing");
  check(displayed(copy) == displayed(interval), "copy of an interval");
}

void stepsOfStringInterval(Input& input) {
  std::string left = input.Text();
  bool withLeft = input.Flag();
  std::string right = input.Text();
  bool withRight = input.Flag();
  BINStringInterval interval(left, withLeft, right, withRight);
  const auto isEmpty = [&] { return right < left || (right == left && !(withLeft && withRight)); };
  if (input.Flag()) {
    left = input.Text();
    withLeft = input.Flag();
    check(interval.SetLeftEnd(left, withLeft) == !isEmpty(), "set the left text");
  }
  if (input.Flag()) {
    // An end that is the interval's own.
    right = left;
    withRight = input.Flag();
    check(interval.SetRightEnd(interval.GetLeftEnd(), withRight) == !isEmpty(), "set the right");
  }
  const std::string value = input.Text();
  const bool isInside = (left < value || (withLeft && left == value)) &&
                        (value < right || (withRight && value == right));
  check(interval.Contains(value) == isInside, "interval contains a text");
  check(interval.IsEmpty() == isEmpty(), "interval of texts is empty");
  BINStringInterval other;
  other = interval;
  const BINStringInterval moved(std::move(interval));
  check(moved == other && displayed(moved) == displayed(other), "moved interval");
  check(moved.GetLeftEnd() == left && moved.IsLeftEndIncluded() == withLeft, "left text");
  check(moved.GetRightEnd() == right && moved.IsRightEndIncluded() == withRight, "right text");
}

}  // namespace

void stepsOfSettings(Input& input) {
  if (input.Flag()) {
    stepsOf<BINSettings>(input);
  } else {
    stepsOf<EFBINSettings>(input);
  }
}

void stepsOfIntervals(Input& input) {
  if (input.Flag()) {
    stepsOfNumericInterval(input);
  } else {
    stepsOfStringInterval(input);
  }
}

}  // namespace fuzz
