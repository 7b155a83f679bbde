// Cutting sorted, weighted values into bins of nearly equal weight.
#include <algorithm>
#include <cmath>

#include "plain_model/model.h"

namespace plain_model {

namespace {

constexpr double kEpsilon = 2.220446049250313e-16;

// What goes over from one boundary to the next.
struct Position {
  std::size_t next = 0;     // the first row not yet read
  double cumulative = 0.0;  // weight of the rows read
  double beforeRun = 0.0;   // that weight before the last run of equal values
};

// One reading up to a target weight.
struct Reading {
  Position from;
  Position to;
  double target = 0.0;
  bool isTotal = false;
  bool exact = false;
};

void appendClosedWeight(const Reading& reading, std::vector<double>& weights) {
  const double before = reading.to.beforeRun;
  const double start = reading.from.cumulative;
  if (!(reading.to.cumulative > reading.target) && !reading.isTotal) {
    if (before != 0.0) {
      weights.push_back(before - start);
    }
  } else if (!reading.exact || reading.isTotal) {
    weights.push_back(reading.to.cumulative - start);
  } else {
    weights.push_back(before - start);
  }
}

void appendOpenWeight(const Reading& reading, double total, std::vector<double>& weights) {
  const double before = reading.to.beforeRun;
  if (before == 0.0) {
    const bool nothingRead = !reading.exact && reading.from.next == 0;
    weights.push_back(nothingRead ? 0.0 : reading.to.cumulative);
  } else {
    const double end = reading.isTotal ? reading.to.cumulative : before;
    weights.push_back(end - reading.from.beforeRun);
  }
  if (!reading.isTotal && reading.to.cumulative == total) {
    weights.push_back(reading.to.cumulative - before);
  }
}

class Cutter {
 public:
  Cutter(const std::vector<Row>& rows, double total, bool rightClosed, bool withBinWeights,
         Events& events)
      : rows_(rows),
        total_(total),
        rightClosed_(rightClosed),
        withBinWeights_(withBinWeights),
        events_(events) {}

  // The boundary at `percentage` of the total weight.
  double Boundary(double percentage, EqualFrequencyCuts& cuts) {
    const double current = rows_[position_.next == 0 ? 0 : position_.next - 1].value;
    Reading reading;
    reading.from = position_;
    reading.target = std::abs(percentage - 100.0) <= 2.220446049250313e-14
                         ? total_
                         : percentage / 100.0 * total_;
    reading.isTotal = reading.target == total_;
    if (position_.cumulative >= reading.target && !cuts.cutPoints.empty() &&
        current == cuts.cutPoints.back()) {
      events_.Count(Event::kRepeatedBoundary);
      return current;
    }
    double next = current;
    double lastIncluded = current;
    while (!PassedTarget(reading.target) && position_.next < rows_.size()) {
      position_.beforeRun = position_.cumulative;
      next = rows_[position_.next].value;
      if (MetTarget(reading.target)) {
        lastIncluded = rows_[position_.next - 1].value;
        reading.exact = true;
        break;
      }
      ReadRun();
    }
    reading.to = position_;
    if (withBinWeights_) {
      if (rightClosed_) {
        appendClosedWeight(reading, cuts.binWeights);
      } else {
        appendOpenWeight(reading, total_, cuts.binWeights);
      }
    }
    if (!reading.exact) {
      return next;
    }
    events_.Count(Event::kExactBoundary);
    position_.cumulative = position_.beforeRun;
    return (next + lastIncluded) / 2;
  }

 private:
  bool PassedTarget(double target) const {
    const double cumulative = position_.cumulative;
    return cumulative >= target && std::abs(cumulative - target) / cumulative >= kEpsilon;
  }

  bool MetTarget(double target) const {
    const double cumulative = position_.cumulative;
    return std::abs(cumulative - target) / std::max(target, cumulative) < kEpsilon;
  }

  void ReadRun() {
    const double value = rows_[position_.next].value;
    do {
      position_.cumulative += rows_[position_.next].weight;
      ++position_.next;
    } while (position_.next < rows_.size() && rows_[position_.next].value == value);
  }

  const std::vector<Row>& rows_;
  double total_;
  bool rightClosed_;
  bool withBinWeights_;
  Events& events_;
  Position position_;
};

// A cut point on the outer border separates nothing.
void removeBorderCut(const std::vector<Row>& rows, bool rightClosed, EqualFrequencyCuts& cuts,
                     Events& events) {
  if (cuts.cutPoints.empty()) {
    return;
  }
  if (rightClosed && cuts.cutPoints.back() == rows.back().value) {
    cuts.cutPoints.pop_back();
    events.Count(Event::kBorderCutRemoved);
  } else if (!rightClosed && cuts.cutPoints.front() == rows.front().value) {
    cuts.cutPoints.erase(cuts.cutPoints.begin());
    if (!cuts.binWeights.empty()) {
      cuts.binWeights.erase(cuts.binWeights.begin());
    }
    events.Count(Event::kBorderCutRemoved);
  }
}

// A bin weight that was never appended counts as 0.0.
void removeEmptyBins(EqualFrequencyCuts& cuts, Events& events) {
  std::vector<double> weights = cuts.binWeights;
  weights.resize(std::max(weights.size(), cuts.cutPoints.size() + 1), 0.0);
  EqualFrequencyCuts kept;
  for (std::size_t j = 0; j < cuts.cutPoints.size(); ++j) {
    if (weights[j] != 0.0) {
      kept.cutPoints.push_back(cuts.cutPoints[j]);
      kept.binWeights.push_back(weights[j]);
    } else {
      events.Count(Event::kEmptyBinRemoved);
    }
  }
  const double last = weights[cuts.cutPoints.size()];
  if (last != 0.0) {
    kept.binWeights.push_back(last);
  } else if (!kept.cutPoints.empty()) {
    kept.cutPoints.pop_back();
    events.Count(Event::kEmptyBinRemoved);
  }
  cuts.cutPoints = kept.cutPoints;
  cuts.binWeights = kept.binWeights;
}

}  // namespace

EqualFrequencyCuts cutEqualFrequency(const std::vector<Row>& rows, double totalWeight,
                                     int numberOfBins, bool rightClosed, bool withBinWeights,
                                     Events& events) {
  EqualFrequencyCuts cuts;
  if (numberOfBins < 1 || rows.empty() || !(totalWeight > 0.0)) {
    return cuts;
  }
  cuts.done = true;
  Cutter cutter(rows, totalWeight, rightClosed, withBinWeights, events);
  const double step = 100.0 / numberOfBins;
  for (int i = 0; i < numberOfBins; ++i) {
    const double boundary = cutter.Boundary(std::min(100.0, (i + 1) * step), cuts);
    const bool repeated = i > 0 && !cuts.cutPoints.empty() && boundary == cuts.cutPoints.back();
    if (i < numberOfBins - 1 && !repeated) {
      cuts.cutPoints.push_back(boundary);
    }
  }
  if (!withBinWeights) {
    return cuts;
  }
  removeBorderCut(rows, rightClosed, cuts, events);
  if (cuts.cutPoints.empty() && cuts.binWeights.empty()) {
    cuts.binWeights.push_back(totalWeight);
  }
  removeEmptyBins(cuts, events);
  return cuts;
}

}  // namespace plain_model
