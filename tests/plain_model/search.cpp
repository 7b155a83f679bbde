// The recursive entropy search and the merging of small bins.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <set>

#include "plain_model/correct_rounding.h"
#include "plain_model/model.h"

namespace plain_model {

namespace {

// Adds a candidate's weights to a side of a split (`sign` 1.0) or takes them away (-1.0).
void addCandidate(const std::vector<double>& weights, double sign, ClassCounts& counts) {
  for (std::size_t c = 0; c < weights.size(); ++c) {
    counts[0] += sign * weights[c];
    counts[c + 1] += sign * weights[c];
  }
}

ClassCounts sumCounts(const Candidates& candidates, std::size_t first, std::size_t last) {
  ClassCounts counts(candidates.weights[first].size() + 1, 0.0);
  for (std::size_t i = first; i <= last; ++i) {
    addCandidate(candidates.weights[i], 1.0, counts);
  }
  return counts;
}

ClassCounts binCounts(const Candidates& candidates, std::size_t first, std::size_t last) {
  ClassCounts counts = sumCounts(candidates, first, last);
  counts[0] = 0.0;
  for (std::size_t c = 1; c < counts.size(); ++c) {
    counts[0] += counts[c];
  }
  return counts;
}

ClassCounts subtract(const ClassCounts& all, const ClassCounts& part) {
  ClassCounts rest(all.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    rest[i] = all[i] - part[i];
  }
  return rest;
}

ClassCounts add(const ClassCounts& a, const ClassCounts& b) {
  ClassCounts sum(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum[i] = a[i] + b[i];
  }
  return sum;
}

// Whether two neighbours carry weight in one and the same single category only.
bool isPure(const std::vector<double>& here, const std::vector<double>& there) {
  int inBoth = 0;
  for (std::size_t c = 0; c < here.size(); ++c) {
    if ((here[c] != 0.0) != (there[c] != 0.0)) {
      return false;
    }
    inBoth += here[c] != 0.0 ? 1 : 0;
  }
  return inBoth == 1;
}

int categoriesPresent(const ClassCounts& counts) {
  return static_cast<int>(
      std::count_if(counts.begin() + 1, counts.end(), [](double weight) { return weight != 0.0; }));
}

struct Interval {
  std::size_t first;
  std::size_t last;
};

// The positions of the interval that are worth an evaluation, in ascending order.
std::vector<std::size_t> positionsToExamine(const Candidates& candidates, Interval interval,
                                            Events& events) {
  std::vector<std::size_t> positions;
  bool carry = false;
  bool beforeWasPure = false;
  for (std::size_t i = interval.first; i < interval.last; ++i) {
    beforeWasPure = isPure(candidates.weights[i], candidates.weights[i + 1]);
    if (!beforeWasPure || carry) {
      positions.push_back(i);
    } else {
      events.Count(Event::kPureStretchSkipped);
    }
    carry = !beforeWasPure;
  }
  if (!beforeWasPure) {
    positions.push_back(interval.last);
    events.Count(Event::kLastPositionExamined);
  }
  return positions;
}

bool isAccepted(const ClassCounts& all, const ClassCounts& left, const ClassCounts& right,
                double bestEntropy) {
  const double n = all[0];
  const int k1 = categoriesPresent(left);
  const int k2 = categoriesPresent(right);
  const int k = k1 + k2;
  const double power = nearestPowerOf3(k);
  const double ent = entropy(all);
  const double delta =
      nearestLog2(power - 2.0) - (k * ent - k1 * entropy(left) - k2 * entropy(right));
  return ent - bestEntropy > nearestLog2(n - 1.0) / n + delta / n;
}

// The position after which the interval is to be split, or the interval's last candidate.
std::size_t findSplit(const Candidates& candidates, Interval interval, Events& events) {
  const ClassCounts all = sumCounts(candidates, interval.first, interval.last);
  const std::optional<Split> best = bestSplit(candidates, interval.first, interval.last, events);
  if (!best || best->position == interval.last) {
    events.CountIf(best.has_value(), Event::kLastPositionBest);
    return interval.last;
  }
  ClassCounts left;
  ClassCounts right;
  if (best->position <= (interval.first + interval.last) / 2) {
    left = sumCounts(candidates, interval.first, best->position);
    right = subtract(all, left);
  } else {
    right = sumCounts(candidates, best->position + 1, interval.last);
    left = subtract(all, right);
  }
  if (!isAccepted(all, left, right, best->entropy)) {
    events.Count(Event::kSplitRefused);
    return interval.last;
  }
  if (std::isnan(candidates.cutAfter[best->position])) {
    events.Count(Event::kNaNCutRefused);
    return interval.last;
  }
  events.Count(Event::kSplitAccepted);
  return best->position;
}

void splitInterval(const Candidates& candidates, Interval interval, std::set<std::size_t>& splits,
                   Events& events) {
  if (interval.first == interval.last) {
    return;
  }
  const std::size_t position = findSplit(candidates, interval, events);
  if (position == interval.last) {
    return;
  }
  splits.insert(position);
  splitInterval(candidates, {interval.first, position}, splits, events);
  splitInterval(candidates, {position + 1, interval.last}, splits, events);
}

struct Merge {
  std::size_t left;
  bool toTheRight;
};

// Which merges the small interior bins ask for, seen over the bins as they are.
std::vector<Merge> chooseMerges(const std::vector<ClassCounts>& bins, double threshold,
                                Events& events) {
  std::vector<Merge> merges;
  for (std::size_t i = 1; i + 1 < bins.size(); ++i) {
    const double leftTotal = bins[i - 1][0];
    const double rightTotal = bins[i + 1][0];
    const double lighter = leftTotal > rightTotal ? rightTotal : leftTotal;
    if (!(threshold * lighter > bins[i][0])) {
      continue;
    }
    const double mergedLeft = splitEntropy(add(bins[i - 1], bins[i]), bins[i + 1]);
    const double mergedRight = splitEntropy(bins[i - 1], add(bins[i], bins[i + 1]));
    events.CountIf(mergedLeft == mergedRight, Event::kSmallBinTie);
    const bool toTheRight = !(mergedRight >= mergedLeft);
    events.Count(toTheRight ? Event::kSmallBinMergedRight : Event::kSmallBinMergedLeft);
    // The bin before the last one went right, this one goes left: both join the bin between them.
    events.CountIf(
        !toTheRight && !merges.empty() && merges.back().toTheRight && merges.back().left + 2 == i,
        Event::kThreeBinsFolded);
    merges.push_back({toTheRight ? i : i - 1, toTheRight});
  }
  return merges;
}

}  // namespace

double entropy(const ClassCounts& counts) {
  if (counts[0] == 0.0) {
    return 0.0;
  }
  double sum = 0.0;
  for (std::size_t c = 1; c < counts.size(); ++c) {
    const double p = counts[c] / counts[0];
    if (p != 0.0) {
      sum += p * nearestLog2(p);
    }
  }
  return 0.0 - sum;
}

double splitEntropy(const ClassCounts& left, const ClassCounts& right) {
  return (left[0] * entropy(left) + right[0] * entropy(right)) / (left[0] + right[0]);
}

std::optional<Split> bestSplit(const Candidates& candidates, std::size_t first, std::size_t last,
                               Events& events) {
  std::optional<Split> best;
  ClassCounts right = sumCounts(candidates, first, last);
  ClassCounts left(right.size(), 0.0);
  std::size_t i = first;
  for (const std::size_t position : positionsToExamine(candidates, {first, last}, events)) {
    for (; i <= position; ++i) {
      addCandidate(candidates.weights[i], 1.0, left);
      addCandidate(candidates.weights[i], -1.0, right);
    }
    const double value = splitEntropy(left, right);
    events.CountIf(best && value == best->entropy, Event::kEqualEntropies);
    if (value < (best ? best->entropy : std::numeric_limits<double>::infinity())) {
      best = {position, value};
    }
  }
  return best;
}

Bins searchCutPoints(const Candidates& candidates, int categories, Events& events) {
  Bins bins;
  std::set<std::size_t> splits;
  const std::size_t last = candidates.weights.size() - 1;
  splitInterval(candidates, {0, last}, splits, events);
  std::size_t first = 0;
  for (const std::size_t position : splits) {
    bins.cutPoints.push_back(candidates.cutAfter[position]);
    bins.counts.push_back(binCounts(candidates, first, position));
    first = position + 1;
  }
  bins.counts.push_back(binCounts(candidates, first, last));
  events.CountIf(bins.cutPoints.size() >= 3, Event::kManyCuts);
  events.CountIf(categories == 1, Event::kOneCategory);
  events.CountIf(categories == 2, Event::kTwoCategories);
  events.CountIf(categories >= 3, Event::kManyCategories);
  return bins;
}

void mergeSmallBins(Bins& bins, double threshold, Events& events) {
  std::vector<Merge> merges = chooseMerges(bins.counts, threshold, events);
  for (std::size_t m = 0; m < merges.size(); ++m) {
    const auto left = static_cast<std::ptrdiff_t>(merges[m].left);
    const std::size_t at = merges[m].left;
    bins.counts[at] = add(bins.counts[at], bins.counts[at + 1]);
    bins.counts.erase(bins.counts.begin() + left + 1);
    bins.cutPoints.erase(bins.cutPoints.begin() + left);
    for (std::size_t later = m + 1; later < merges.size(); ++later) {
      --merges[later].left;
    }
  }
}

}  // namespace plain_model
