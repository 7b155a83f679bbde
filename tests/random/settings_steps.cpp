#include <mcbinning/settings.h>
#include <mcbinning/user_missing.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "random/agreement.h"
#include "random/steps.h"
#include "support/display.h"
#include "support/host_objects.h"

namespace mcbinning_tests {

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
void stepOfThresholds(Choices& choices, BINSettings& settings, SettingsModel& model) {
  if (choices.Flag()) {
    const int threshold = choices.Flag() ? choices.AnyInt() : choices.Between(-1, 3);
    compare("threshold", settings.SetNumDistinctValueThreshold(threshold), threshold >= 0);
    model.threshold = threshold >= 0 ? threshold : model.threshold;
  } else {
    const double smallBins = choices.Flag() ? choices.Number() : choices.Below(3) / 2.0;
    const bool isGood = smallBins >= 0.0 && smallBins <= 1.0;
    compare("small bins", settings.SetSmallBinDetectionThreshold(smallBins), isGood);
    model.smallBins = isGood ? smallBins : model.smallBins;
  }
}

void stepOfThresholds(Choices& /*choices*/, EFBINSettings& /*settings*/, SettingsModel& /*model*/) {
}

void compareThresholds(const BINSettings& settings, const SettingsModel& model) {
  compare("same threshold", settings.GetNumDistinctValueThreshold(), model.threshold);
  compare("same small bins", settings.GetSmallBinDetectionThreshold(), model.smallBins);
}

void compareThresholds(const EFBINSettings& /*settings*/, const SettingsModel& /*model*/) {}

template <typename Settings>
void compareSettings(Settings& settings, const SettingsModel& model) {
  compare("same attribute reports", settings.GetNSkippedAttReports(), model.attributeReports);
  compare("same case reports", settings.GetNSkippedCasesReports(), model.caseReports);
  compare("same bins", settings.GetNumberOfBins(), model.bins);
  compare("same border", settings.IsRightBorderClosed(), model.closed);
  compare("same directory", settings.GetTempDirName(), model.directory);
  compare("same listener", settings.GetProgressListener(), model.listener);
  compare("same query", settings.GetCancelPointer(), model.query);
  compareThresholds(settings, model);
}

template <typename Settings>
void stepOfSettings(Choices& choices, Settings& settings, SettingsModel& model) {
  static RecordingListener listener;
  static CountingQuery query;
  const int number = choices.Flag() ? choices.AnyInt() : choices.Between(-1, 3);
  switch (choices.Below(8)) {
    case 0:
      compare("attribute reports", settings.SetNSkippedAttReports(number), number >= 0);
      model.attributeReports = number >= 0 ? number : model.attributeReports;
      return;
    case 1:
      compare("case reports", settings.SetNSkippedCasesReports(number), number >= 0);
      model.caseReports = number >= 0 ? number : model.caseReports;
      return;
    case 2:
      compare("bins", settings.SetNumberOfBins(number), number >= 2);
      model.bins = number >= 2 ? number : model.bins;
      return;
    case 3:
      model.closed = choices.Flag();
      return settings.SetRightBorderClosed(model.closed);
    case 4:
      model.directory = choices.Text();
      return settings.SetTempDirName(model.directory);
    case 5:
      model.listener = choices.Flag() ? &listener : nullptr;
      return settings.SetProgressListener(model.listener);
    case 6:
      model.query = choices.Flag() ? &query : nullptr;
      return settings.SetCancelPointer(model.query);
    default:
      return stepOfThresholds(choices, settings, model);
  }
}

template <typename Settings>
void stepsOf(Choices& choices) {
  Settings left;
  Settings right;
  SettingsModel leftModel;
  leftModel.directory = left.GetTempDirName();
  SettingsModel rightModel = leftModel;
  for (int steps = choices.Below(24); steps > 0; --steps) {
    switch (choices.Below(8)) {
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
        check(DisplayOf(copy) == DisplayOf(left) && copy == left, "copy of settings");
        break;
      }
      case 3:
        stepOfSettings(choices, right, rightModel);
        break;
      default:
        stepOfSettings(choices, left, leftModel);
    }
    compareSettings(left, leftModel);
    compareSettings(right, rightModel);
    compare("equal settings", (left == right), leftModel.IsEqualTo(rightModel));
  }
}

void stepsOfNumericInterval(Choices& choices) {
  double left = choices.Number();
  double right = choices.Number();
  BINNumericInterval interval(left, right);
  if (choices.Flag()) {
    left = choices.Number();
    compare("set the left end", interval.SetLeftEnd(left), left <= right);
  }
  if (choices.Flag()) {
    right = choices.Number();
    compare("set the right end", interval.SetRightEnd(right), left <= right);
  }
  const double value = choices.Number();
  compare("interval contains", interval.Contains(value), left <= value && value <= right);
  compare("interval is empty", interval.IsEmpty(), left > right);
  compare("left end is infinite", interval.IsLeftEndInfinite(),
          (left == -std::numeric_limits<double>::max()));
  compare("right end is infinite", interval.IsRightEndInfinite(),
          (right == std::numeric_limits<double>::max()));
  const bool upTo = choices.Flag();
  check(BINNumericInterval(left, upTo).Contains(value) ==
            (upTo ? value <= left && value >= -std::numeric_limits<double>::max()
                  : value >= left && value <= std::numeric_limits<double>::max()),
        "interval to infinity contains");
  const BINNumericInterval copy = interval;
  compare("a NaN equals nothing", (copy == interval), left == left && right == right);
  compare("copy of an interval", DisplayOf(copy), DisplayOf(interval));
}

void stepsOfStringInterval(Choices& choices) {
  std::string left = choices.Text();
  bool withLeft = choices.Flag();
  std::string right = choices.Text();
  bool withRight = choices.Flag();
  BINStringInterval interval(left, withLeft, right, withRight);
  const auto isEmpty = [&] { return right < left || (right == left && !(withLeft && withRight)); };
  if (choices.Flag()) {
    left = choices.Text();
    withLeft = choices.Flag();
    compare("set the left text", interval.SetLeftEnd(left, withLeft), !isEmpty());
  }
  if (choices.Flag()) {
    // An end that is the interval's own.
    right = left;
    withRight = choices.Flag();
    check(interval.SetRightEnd(interval.GetLeftEnd(), withRight) == !isEmpty(), "set the right");
  }
  const std::string value = choices.Text();
  const bool isInside = (left < value || (withLeft && left == value)) &&
                        (value < right || (withRight && value == right));
  compare("interval contains a text", interval.Contains(value), isInside);
  compare("interval of texts is empty", interval.IsEmpty(), isEmpty());
  BINStringInterval other;
  other = interval;
  const BINStringInterval moved(std::move(interval));
  check(moved == other && DisplayOf(moved) == DisplayOf(other), "moved interval");
  check(moved.GetLeftEnd() == left && moved.IsLeftEndIncluded() == withLeft, "left text");
  check(moved.GetRightEnd() == right && moved.IsRightEndIncluded() == withRight, "right text");
}

}  // namespace

void stepsOfSettings(Choices& choices) {
  if (choices.Flag()) {
    stepsOf<BINSettings>(choices);
  } else {
    stepsOf<EFBINSettings>(choices);
  }
}

void stepsOfIntervals(Choices& choices) {
  if (choices.Flag()) {
    stepsOfNumericInterval(choices);
  } else {
    stepsOfStringInterval(choices);
  }
}

}  // namespace mcbinning_tests
