#include "supervised/ef_preprocess.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "data/sorted_rows.h"
#include "supervised/ef_targets.h"

namespace MCBinning {
namespace {

// The one pass over the rows that finds boundary after boundary.
class BoundaryPass {
 public:
  // Without `binWeights` no weights are kept.
  BoundaryPass(const SortedRows& table, bool rightBorderClosed, double totalWeight,
               std::vector<double>& cutPoints, std::vector<double>* binWeights)
      : table_(table),
        rightBorderClosed_(rightBorderClosed),
        totalWeight_(totalWeight),
        cutPoints_(cutPoints),
        binWeights_(binWeights) {}

  bool HasReached(double target) const { return cumulative_ >= target; }

  // The rows read so far already reach the target and end at the last cut point.
  bool RepeatsLastCutPoint(double target) const {
    return HasReached(target) && !cutPoints_.empty() && ValueBefore(position_) == cutPoints_.back();
  }

  // Reads on to the target and returns the boundary there; appends the weight of the bin that ends.
  double FindBoundary(double target) {
    const Entry entry{position_, cumulative_, beforeLastRun_};
    double next = ValueBefore(position_);
    bool isMet = false;
    while (!EFTargets::IsPassed(target, cumulative_) && position_ < table_.Size()) {
      beforeLastRun_ = cumulative_;
      next = table_.Value(position_);
      isMet = EFTargets::IsMet(target, cumulative_);
      if (isMet) {
        break;
      }
      ReadRun(next);
    }
    if (binWeights_ != nullptr) {
      if (rightBorderClosed_) {
        AppendClosedBin(entry, target);
      } else {
        AppendOpenBin(entry, target);
      }
    }
    return isMet ? (next + ValueBefore(position_)) / 2 : next;
  }

 private:
  // The running quantities as a boundary found them.
  struct Entry {
    std::size_t position;
    double cumulative;
    double beforeLastRun;
  };

  double ValueBefore(std::size_t position) const {
    return table_.Value(position == 0 ? 0 : position - 1);
  }

  // In the tie order.
  void ReadRun(double value) {
    do {
      cumulative_ += table_.Weight(position_);
      ++position_;
    } while (position_ < table_.Size() && table_.Value(position_) == value);
  }

  // The run that crosses the target belongs to the bin that ends.
  void AppendClosedBin(const Entry& entry, double target) {
    if (!(cumulative_ > target) && target != totalWeight_) {
      if (beforeLastRun_ != 0.0) {
        binWeights_->push_back(beforeLastRun_ - entry.cumulative);
      }
    } else {
      binWeights_->push_back(cumulative_ - entry.cumulative);
    }
  }

  // The run that crosses the target belongs to the bin that begins.
  void AppendOpenBin(const Entry& entry, double target) {
    if (beforeLastRun_ == 0.0) {
      binWeights_->push_back(entry.position == 0 ? 0.0 : cumulative_);
    } else {
      const double end = target == totalWeight_ ? cumulative_ : beforeLastRun_;
      binWeights_->push_back(end - entry.beforeLastRun);
    }
    if (target != totalWeight_ && cumulative_ == totalWeight_) {
      binWeights_->push_back(cumulative_ - beforeLastRun_);
    }
  }

  const SortedRows& table_;
  bool rightBorderClosed_;
  double totalWeight_;
  std::vector<double>& cutPoints_;
  std::vector<double>* binWeights_;
  std::size_t position_ = 0;
  double cumulative_ = 0.0;
  double beforeLastRun_ = 0.0;
};

bool canBeCut(const SortedRows& table, int numberOfBins, double totalWeight) {
  return numberOfBins >= 1 && table.Size() != 0 && totalWeight > 0.0;
}

// The first step from `step` on whose target lies beyond the rows read so far.
int firstStepBeyond(const BoundaryPass& pass, const EFTargets& targets, int step,
                    int numberOfBins) {
  int end = numberOfBins;
  while (step < end) {
    const int middle = step + (end - step) / 2;
    if (pass.HasReached(targets.Of(middle))) {
      step = middle + 1;
    } else {
      end = middle;
    }
  }
  return step;
}

void findBoundaries(int numberOfBins, const EFTargets& targets, BoundaryPass pass,
                    std::vector<double>& cutPoints) {
  for (int i = 0; i < numberOfBins;) {
    const double target = targets.Of(i);
    if (pass.RepeatsLastCutPoint(target)) {
      i = firstStepBeyond(pass, targets, i + 1, numberOfBins);  // those before it repeat it too
      continue;
    }
    const double boundary = pass.FindBoundary(target);
    const bool isLast = i == numberOfBins - 1;  // made for the weight of the last bin only
    if (!isLast && (cutPoints.empty() || boundary != cutPoints.back())) {
      cutPoints.push_back(boundary);
    }
    ++i;
  }
}

void removeCutPointAtEnd(const SortedRows& table, bool rightBorderClosed,
                         std::vector<double>& cutPoints, std::vector<double>& binWeights) {
  if (cutPoints.empty()) {
    return;
  }
  if (rightBorderClosed) {
    if (cutPoints.back() == table.Value(table.Size() - 1)) {
      cutPoints.pop_back();
    }
  } else if (cutPoints.front() == table.Value(0)) {
    cutPoints.erase(cutPoints.begin());
    binWeights.erase(binWeights.begin());
  }
}

// A bin is dropped together with the cut point that ends it, the last bin with the one that begins
// it. A bin whose weight was not kept, because rounding let the rows before it reach the total, is
// as empty as one of weight 0.
void removeEmptyBins(std::vector<double>& cutPoints, std::vector<double>& binWeights) {
  binWeights.resize(cutPoints.size() + 1, 0.0);
  std::vector<double> keptCutPoints;
  std::vector<double> keptWeights;
  for (std::size_t bin = 0; bin < cutPoints.size(); ++bin) {
    if (binWeights[bin] != 0.0) {
      keptCutPoints.push_back(cutPoints[bin]);
      keptWeights.push_back(binWeights[bin]);
    }
  }
  if (binWeights.back() != 0.0) {
    keptWeights.push_back(binWeights.back());
  } else if (!keptCutPoints.empty()) {
    keptCutPoints.pop_back();
  }
  cutPoints = std::move(keptCutPoints);
  binWeights = std::move(keptWeights);
}

}  // namespace

BINEFPreProcess::BINEFPreProcess(int numberOfBins, bool rightBorderClosed)
    : rightBorderClosed_(rightBorderClosed), numberOfBins_(numberOfBins) {}

BINEFPreProcess::~BINEFPreProcess() = default;

bool BINEFPreProcess::RunOverTriples(const SortedRows& table, std::vector<double>& cutPoints,
                                     std::vector<double>& /*binWeights*/, double totalWeight) {
  if (!canBeCut(table, numberOfBins_, totalWeight)) {
    return false;
  }
  findBoundaries(numberOfBins_, EFTargets(numberOfBins_, totalWeight),
                 BoundaryPass(table, rightBorderClosed_, totalWeight, cutPoints, nullptr),
                 cutPoints);
  return true;
}

bool BINEFPreProcess::RunOverPairs(const SortedRows& table, std::vector<double>& cutPoints,
                                   std::vector<double>& binWeights, double totalWeight) {
  if (!canBeCut(table, numberOfBins_, totalWeight)) {
    return false;
  }
  findBoundaries(numberOfBins_, EFTargets(numberOfBins_, totalWeight),
                 BoundaryPass(table, rightBorderClosed_, totalWeight, cutPoints, &binWeights),
                 cutPoints);
  removeCutPointAtEnd(table, rightBorderClosed_, cutPoints, binWeights);
  if (cutPoints.empty() && binWeights.empty()) {
    binWeights.push_back(totalWeight);
  }
  removeEmptyBins(cutPoints, binWeights);
  return true;
}

}  // namespace MCBinning
