#include "supervised/split_scan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kRounding = 0x1p-53;  // of one operation, relative
constexpr std::size_t kFewCandidates = 8;

/// x log2 x, which is 0 at 0.
double xLogX(double x) { return x > 0.0 ? x * std::log2(x) : 0.0; }

}  // namespace

SplitScan::SplitScan(const CandidateTable& table, const RunningCounts& counts)
    : table_(table), counts_(counts) {}

/// Whether this candidate and the next one carry one and the same single category.
bool SplitScan::IsPure(std::size_t candidate) const {
  const std::size_t entry = table_.FirstEntry(candidate);
  const std::size_t next = table_.FirstEntry(candidate + 1);
  return next - entry == 1 && table_.FirstEntry(candidate + 2) - next == 1 &&
         table_.Code(entry) == table_.Code(next);
}

/// In a run of candidates of one single category only the position after its first candidate is,
/// and only when another candidate comes before the run. The last position follows the one before.
bool SplitScan::IsExamined(std::size_t position) const {
  return (position < last_ && !IsPure(position)) || (position > first_ && !IsPure(position - 1));
}

void SplitScan::Evaluate(std::size_t position, const SplitCounts& counts) {
  const double entropy = WeightedEntropy(counts.left, counts.right);
  if (entropy < best_.entropy || (entropy == best_.entropy && position < best_.position)) {
    best_ = {position, entropy, true};
  }
}

SplitScan::Split SplitScan::FindBest(std::size_t first, std::size_t last) {
  first_ = first;
  last_ = last;
  weight_ = counts_.Total()[0];
  best_ = {0, kInfinity, false};
  Border& begin = borders_[0];
  Border& end = borders_[1];
  begin.at = first;
  end.at = last + 1;
  for (Border* border : {&begin, &end}) {
    counts_.At(border->at, border->counts);
    FillTerms(*border);
  }
  Search(begin, end, 2);
  return best_;
}

/// Looks at the positions after the candidates from begin to before end.
void SplitScan::Search(const Border& begin, const Border& end, std::size_t depth) {
  if (end.at - begin.at <= kFewCandidates) {
    ScanAll(begin, end.at);
    return;
  }
  Border& middle = borders_[depth];
  middle.at = begin.at + (end.at - begin.at) / 2;
  if (const std::size_t kept = RunningCounts::KeptBorder(middle.at); kept > begin.at) {
    middle.at = kept;
    counts_.At(kept, middle.counts);
  } else {
    middle.counts = begin.counts;
    counts_.Move(begin.at, middle.at, middle.counts);
  }
  FillTerms(middle);
  if (IsExamined(middle.at - 1) && !(LeastEntropy(middle, middle) > best_.entropy)) {
    Evaluate(middle.at - 1, middle.counts);
  }
  const double leastLeft = LeastEntropy(begin, middle);
  const double leastRight = LeastEntropy(middle, end);
  const auto searchLeft = [&] {
    if (!(leastLeft > best_.entropy)) {
      Search(begin, middle, depth + 1);
    }
  };
  if (leastLeft <= leastRight) {
    searchLeft();
  }
  if (!(leastRight > best_.entropy)) {
    Search(middle, end, depth + 1);
  }
  if (!(leastLeft <= leastRight)) {
    searchLeft();
  }
}

void SplitScan::ScanAll(const Border& begin, std::size_t end) {
  running_ = begin.counts;
  for (std::size_t position = begin.at; position < end; ++position) {
    counts_.Move(position, position + 1, running_);
    if (IsExamined(position)) {
      Evaluate(position, running_);
    }
  }
}

void SplitScan::FillTerms(Border& border) const {
  border.terms.resize(table_.GetNCategories());
  for (std::size_t category = 1; category <= border.terms.size(); ++category) {
    border.terms[category - 1] = xLogX(border.counts.left[category] / weight_) +
                                 xLogX(border.counts.right[category] / weight_);
  }
}

/// Less than what is evaluated at any position from begin to before end can be, or NaN when nothing
/// is known; infinity when all of that is NaN.
double SplitScan::LeastEntropy(const Border& begin, const Border& end) const {
  const SplitCounts& from = begin.counts;
  const SplitCounts& to = end.counts;
  const double middleLeft = (from.left[0] + to.left[0]) / 2.0 / weight_;
  const double middleRight = (from.right[0] + to.right[0]) / 2.0 / weight_;
  const double slope = std::log2(middleLeft) - std::log2(middleRight);
  const double slopeOfCount = slope / weight_;
  double least = xLogX(middleLeft) + xLogX(middleRight) - slope * middleLeft;
  bool isBounded = true;
  for (std::size_t category = 1; category < from.left.size(); ++category) {
    if (from.right[category] < 0.0 && from.right[category] / from.right[0] < 0.0 &&
        to.right[0] > 0.0) {
      return kInfinity;  // counts only fall, so the logarithm of this share stays NaN
    }
    isBounded = isBounded && !(to.right[category] < 0.0);
    least += std::min(slopeOfCount * from.left[category] - begin.terms[category - 1],
                      slopeOfCount * to.left[category] - end.terms[category - 1]);
  }
  // A bound without limit comes of a quotient that overflowed.
  return isBounded && std::isfinite(least) ? least - Slack(begin, end, slope)
                                           : std::numeric_limits<double>::quiet_NaN();
}

/// Most by which rounding can lift the computed bound above a computed entropy.
double SplitScan::Slack(const Border& begin, const Border& end, double slope) const {
  const auto nCategories = static_cast<double>(table_.GetNCategories());
  double slack = (nCategories + 16.0) * 256.0 * kRounding;
  slack += 4.0 * std::numeric_limits<double>::denorm_min() / weight_;
  if (!counts_.IsExact()) {
    const auto rounding = [this](std::size_t from, std::size_t to) {
      return 4.0 * kRounding * static_cast<double>(table_.FirstEntry(to) - table_.FirstEntry(from));
    };
    const double inStretch = rounding(begin.at, end.at);
    const double inInterval = rounding(first_, last_ + 1);
    slack -= 2.0 * nCategories * xLogX(inStretch);
    slack += inInterval * (2.0 * std::abs(std::log2(end.counts.right[0] / weight_)) +
                           std::abs(slope) + 2.0 * std::log2(nCategories) + 6.0);
  }
  return slack;
}

}  // namespace MCBinning
