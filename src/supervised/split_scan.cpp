#include "supervised/split_scan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/log2.h"

// A split lies in a gap between candidates; gap g is the one before candidate g. The gaps at both
// ends of the interval are known, the one half-way is looked at, and each half that remains is
// searched in turn, the more promising one first:
//
//     gap         0       8      16      24      32       interval of candidates 0 to 31
//                 |  left half    |  right half   |
//                 | left  | right |               |       left out when its bound exceeds the best
//                 | . . . |                               at most kFewCandidates: gap after gap
//
// The bound of a stretch comes from the class counts at its two ends alone. With all weights as
// shares of the interval's, l of class c to the left of a gap and L of all classes, and with
// t(x, y) = x log2 x + y log2 y, the entropy at a gap is
//
//     E = t(L, R) - sum over c of t(l_c, r_c)
//
// t(L, R) is convex in L and so nowhere below its tangent at the middle of the stretch. Its slope
// times L is the sum of slope times l_c, and slope * l_c - t(l_c, r_c) is concave in l_c and so
// least at one of the ends. At a gap inside, the tangent less the terms there is a bound that needs
// no further logarithm. What is evaluated is the entropy itself, never the bound, so the result is
// that of looking at every gap.

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kRounding = 0x1p-53;             // of one operation, relative
constexpr std::size_t kFewCandidates = 8;         // measured: more are no faster
constexpr std::uint32_t kLogTableSize = 1 << 14;  // small enough for the cache
constexpr double kNotYet = -1.0;                  // no n log2 n is negative

bool hasNegativeShare(const ClassCounts& counts) {
  return std::any_of(counts.begin() + 1, counts.end(),
                     [&](double count) { return count < 0.0 && count / counts[0] < 0.0; });
}

/// x log2 x, which is 0 at 0 and NaN below.
double xLogX(double x) { return x != 0.0 ? x * quickLog2(x) : 0.0; }

}  // namespace

SplitScan::SplitScan(const CandidateTable& table, const RunningCounts& counts)
    : table_(table), counts_(counts) {
  if (counts_.IsExact()) {
    tableEnd_ = kLogTableSize;
    logTable_.assign(kLogTableSize, kNotYet);
  }
}

/// Whether this candidate and the next one carry one and the same single category.
bool SplitScan::IsPure(std::size_t candidate) const {
  const std::size_t entry = table_.FirstEntry(candidate);
  const std::size_t next = table_.FirstEntry(candidate + 1);
  return next - entry == 1 && table_.FirstEntry(candidate + 2) - next == 1 &&
         table_.Code(entry) == table_.Code(next);
}

/// In a run of candidates of one single category only the gap after its first candidate is, and
/// only when another candidate comes before the run. The last gap follows the one before.
bool SplitScan::IsExamined(std::size_t gap) const {
  return (gap <= last_ && !IsPure(gap - 1)) || (gap > first_ + 1 && !IsPure(gap - 2));
}

/// Unless the bound excludes it that the tangent of its stretch gives.
void SplitScan::Evaluate(const Gap& gap, const Tangent& tangent) {
  if (LeastEntropyAt(gap, tangent) > limit_ || !IsExamined(gap.at)) {
    return;
  }
  const double entropy = weightedEntropy(gap.counts.left, gap.counts.right);
  if (entropy < best_.entropy || (entropy == best_.entropy && gap.at < best_.gap)) {
    best_ = {gap.at, entropy, true};
    limit_ = std::min(limit_, entropy);
  }
}

/// Evaluates a gap between two stretches only where sums are rounded. Else what its own tangent
/// gives is wrong by no more than the slack in either direction, which limits what is worth looking
/// at; if nothing better turns up, the gap is evaluated as the end of the stretch before it.
void SplitScan::Estimate(const Gap& gap, const Tangent& tangent) {
  if (!counts_.IsExact()) {
    Evaluate(gap, tangent);
  } else if (!(LeastEntropyAt(gap, tangent) > limit_) && IsExamined(gap.at)) {
    limit_ = std::min(limit_, LeastEntropyAt(gap, TangentBetween(gap, gap)) + 2.0 * exactSlack_);
  }
}

/// Makes the interval's two ends the first two gaps.
void SplitScan::SetInterval(std::size_t first, std::size_t last) {
  first_ = first;
  last_ = last;
  weight_ = counts_.Total()[0];
  inverseOfWeight_ = 1.0 / weight_;
  logOfWeight_ = roundedLog2(weight_);
  exactSlack_ = SlackOfExactSums();
  best_ = {0, kInfinity, false};
  limit_ = kInfinity;
  gaps_[0].at = first;
  gaps_[1].at = last + 1;
  for (std::size_t end = 0; end < 2; ++end) {
    counts_.At(gaps_[end].at, gaps_[end].counts);
    FillTerms(gaps_[end]);
  }
}

SplitScan::Split SplitScan::FindBest(std::size_t first, std::size_t last) {
  SetInterval(first, last);
  Search(gaps_[0], gaps_[1], TangentBetween(gaps_[0], gaps_[1]), 2);
  return best_;
}

/// What is evaluated at a gap between candidates may belong to one that no scan examines, inside a
/// run of one class. Then one that is examined, at an end of the run, is no worse but for rounding,
/// which the slack covers.
SplitScan::Bounds SplitScan::BoundStretches(std::size_t first, std::size_t last) {
  SetInterval(first, last);
  Bounds bounds{{}, kInfinity};
  running_ = gaps_[0];
  for (std::size_t candidate = first; candidate <= last; ++candidate) {
    gaps_[2] = running_;
    MoveOn(running_);
    bounds.leastEntropies.push_back(
        LeastEntropy(gaps_[2], running_, TangentBetween(gaps_[2], running_)));
    if (candidate < last) {
      bounds.greatestBest = std::min(bounds.greatestBest,
                                     weightedEntropy(running_.counts.left, running_.counts.right));
    }
  }
  bounds.greatestBest += Slack(gaps_[0], gaps_[1], 0.0);
  return bounds;
}

/// Looks at the gaps after begin and before end.
void SplitScan::Search(const Gap& begin, const Gap& end, const Tangent& tangent,
                       std::size_t depth) {
  if (end.at - begin.at <= kFewCandidates) {
    ScanAll(begin, end.at, tangent);
    return;
  }
  Gap& middle = gaps_[depth];
  middle.at = begin.at + (end.at - begin.at) / 2;
  if (const std::size_t kept = RunningCounts::KeptGap(middle.at); kept > begin.at) {
    middle.at = kept;
    counts_.At(kept, middle.counts);
  } else {
    middle.counts = begin.counts;
    counts_.Move(begin.at, middle.at, middle.counts);
  }
  FillTerms(middle);
  Estimate(middle, tangent);
  const Tangent ofLeft = TangentBetween(begin, middle);
  const Tangent ofRight = TangentBetween(middle, end);
  const double leastLeft = LeastEntropy(begin, middle, ofLeft);
  const double leastRight = LeastEntropy(middle, end, ofRight);
  const auto searchLeft = [&] {
    if (!(leastLeft > limit_)) {
      Search(begin, middle, ofLeft, depth + 1);
    }
  };
  if (leastLeft <= leastRight) {
    searchLeft();
  }
  if (!(leastRight > limit_)) {
    Search(middle, end, ofRight, depth + 1);
  }
  if (!(leastLeft <= leastRight)) {
    searchLeft();
  }
}

void SplitScan::ScanAll(const Gap& begin, std::size_t end, const Tangent& tangent) {
  running_ = begin;
  while (running_.at < end) {
    MoveOn(running_);
    Evaluate(running_, tangent);
  }
}

/// Moves a gap on by one candidate.
void SplitScan::MoveOn(Gap& gap) {
  const std::size_t candidate = gap.at++;
  counts_.Move(candidate, gap.at, gap.counts);
  for (std::size_t entry = table_.FirstEntry(candidate); entry < table_.FirstEntry(gap.at);
       ++entry) {
    double& term = gap.terms[table_.Code(entry)];
    gap.sumOfTerms -= term;
    term = Term(gap.counts, table_.Code(entry));
    gap.sumOfTerms += term;
  }
}

void SplitScan::FillTerms(Gap& gap) {
  gap.terms.resize(table_.GetNCategories());
  gap.sumOfTerms = 0.0;
  for (std::size_t category = 0; category < gap.terms.size(); ++category) {
    gap.terms[category] = Term(gap.counts, category);
    gap.sumOfTerms += gap.terms[category];
  }
}

double SplitScan::Term(const SplitCounts& counts, std::size_t category) {
  const double left = counts.left[category + 1];
  const double right = counts.right[category + 1];
  if (left + right < tableEnd_) {
    return (TableEntry(left) + TableEntry(right) - (left + right) * logOfWeight_) *
           inverseOfWeight_;
  }
  return xLogX(left / weight_) + xLogX(right / weight_);
}

double SplitScan::TableEntry(double count) {
  double& entry = logTable_[static_cast<std::uint32_t>(count)];
  if (entry < 0.0) {
    entry = count > 0.0 ? count * roundedLog2(count) : 0.0;
  }
  return entry;
}

/// Touches where half of the weight between two gaps is left.
SplitScan::Tangent SplitScan::TangentBetween(const Gap& begin, const Gap& end) const {
  const double left = (begin.counts.left[0] + end.counts.left[0]) / 2.0;
  const double right = (begin.counts.right[0] + end.counts.right[0]) / 2.0;
  const double logRight = quickLog2(right / weight_);
  const double slope = quickLog2(left / weight_) - logRight;
  return {logRight - Slack(begin, end, slope), slope};
}

/// Less than what is evaluated at a gap inside the tangent's stretch, or NaN when nothing is known.
double SplitScan::LeastEntropyAt(const Gap& gap, const Tangent& tangent) const {
  return tangent.atZero + tangent.slope * (gap.counts.left[0] / weight_) - gap.sumOfTerms;
}

/// Less than what is evaluated at any gap from begin to end can be, or NaN when nothing is known;
/// infinity when all of that is NaN.
double SplitScan::LeastEntropy(const Gap& begin, const Gap& end, const Tangent& tangent) const {
  const SplitCounts& from = begin.counts;
  const SplitCounts& to = end.counts;
  if (std::isnan(begin.sumOfTerms) && to.right[0] > 0.0 && hasNegativeShare(from.right)) {
    return kInfinity;  // counts only fall, so the logarithm of that share stays NaN
  }
  const double slopeOfCount = tangent.slope / weight_;
  double least = tangent.atZero;
  for (std::size_t category = 0; category < begin.terms.size(); ++category) {
    least += std::min(slopeOfCount * from.left[category + 1] - begin.terms[category],
                      slopeOfCount * to.left[category + 1] - end.terms[category]);
  }
  // A bound without limit comes of a quotient that overflowed.
  return std::isfinite(least) && !std::isnan(end.sumOfTerms)
             ? least
             : std::numeric_limits<double>::quiet_NaN();
}

/// Most by which rounding can lift the computed bound above a computed entropy; infinity where two
/// running counts can add up to infinity, which makes a computed entropy 0. With u = 2^-53, k
/// categories, W the weight of the interval and logarithms to base 2:
///
/// - The direct formula: share, logarithm and product carry one rounding each, as every addition of
///   the k terms does, which are log k in sum: less than u ((k + 7) log k + 2).
/// - The bound: shares up to 1 and slopes up to 54 (counts are whole and below 2^53) make k + 10
///   terms, each wrong by at most 80 u; a logarithm in it errs by u (|log x| + 2).
/// - The table: W is below 2^53, so a term errs by 7 u 53 of its share, all of them by 371 u.
/// - The terms that move on: at most 8 k are exchanged, each by two additions to a sum of at most
///   log (2 k): less than 16 u k log (2 k).
///
/// Together that is less than 256 u (k + 16), the slack of exact sums. Besides, L Ent(S1) of a tiny
/// interval may be rounded to a denormal number: 4 times the least positive double divided by W.
///
/// Where sums are rounded, the counts at the gaps A and B come from the same running sums as those
/// in between, and are monotone as these are. Let m be the number of additions between A and B and
/// n that of the interval. A running sum errs by at most n u W and drifts by at most m u W between
/// A and B.
///
/// - The shares left and right of a category add up to a constant but for 2 m u. t(x, y) changes by
///   at most -d log d when an argument changes by d, twice per category: 2 k (-d log d), d = 4 m u.
/// - The total of a side and the sum of its categories differ by up to 2 n u of that side on the
///   left and 4 n u of W on the right, which counts with the logarithms of both sides and of the
///   shares where the tangent touches (on the right R_B or more), with its slope s and with E
///   itself. As log k is at most 8, 4 n u (2 |log R_B| + |s| + 22) covers it.
/// - A count below 0, left after subtracting rounded sums, gives no bound at B. At A it makes every
///   later entropy of the interval NaN, since counts only fall; such a stretch is left out.
double SplitScan::Slack(const Gap& begin, const Gap& end, double slope) const {
  if (counts_.IsExact()) {
    return exactSlack_;
  }
  const auto rounding = [this](std::size_t from, std::size_t to) {
    return 4.0 * kRounding * static_cast<double>(table_.FirstEntry(to) - table_.FirstEntry(from));
  };
  const double inStretch = rounding(begin.at, end.at);
  const double inInterval = rounding(first_, last_ + 1);
  const double logAtEnd = quickLog2(end.counts.right[0] / weight_);
  return exactSlack_ - 2.0 * static_cast<double>(table_.GetNCategories()) * xLogX(inStretch) +
         inInterval * (2.0 * std::abs(logAtEnd) + std::abs(slope) + 22.0);
}

double SplitScan::SlackOfExactSums() const {
  if (!(weight_ <= std::numeric_limits<double>::max() / 2.0)) {
    return kInfinity;
  }
  const auto nCategories = static_cast<double>(table_.GetNCategories());
  return (nCategories + 16.0) * 256.0 * kRounding +
         4.0 * std::numeric_limits<double>::denorm_min() / weight_;
}

}  // namespace MCBinning
