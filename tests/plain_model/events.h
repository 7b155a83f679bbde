/// What happened during runs of the plain model, so that a test can tell that its random runs
/// reached everything worth comparing.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_EVENTS_H
#define MCBINNING_TESTS_PLAIN_MODEL_EVENTS_H

#include <array>
#include <cstddef>

namespace plain_model {

enum class Event {
  kNullCase,
  kCaseWithoutWeight,
  kMissingTarget,
  kUserMissingValue,
  kTargetCodeRefused,
  kAttributeCodeRefused,
  kUndeclaredCategory,
  kManyCases,
  kNaNValue,
  kInfiniteValue,
  kNegativeZero,
  kDenormalValue,
  kFractionalWeight,
  kTiedValues,
  kUnusableTarget,
  kUnusableAttribute,
  kRepeatedBoundary,
  kExactBoundary,
  kBorderCutRemoved,
  kEmptyBinRemoved,
  kPureStretchSkipped,
  kEqualEntropies,
  kLastPositionExamined,
  kLastPositionBest,
  kSplitAccepted,
  kSplitRefused,
  kNaNCutRefused,
  kManyCuts,
  kPreBins,
  kPreBinsWithoutCut,
  kPreBinCountWarning,
  kOuterPreBinCutDropped,
  kSmallBinMergedLeft,
  kSmallBinMergedRight,
  kSmallBinTie,
  kThreeBinsFolded,
  kScaleTarget,
  kWeightAsTarget,
  kOneCategory,
  kTwoCategories,
  kManyCategories,
  kRightClosed,
  kRightOpen,
  kNoValidCases,
  kSingleValue,
  kNoCutFound,
  kRefusedPair,
  kRefusedSelection,
  kTwoListSelection,
  kAttributeSelection,
  kWholeList,
  kTargetRefusedForAll,
  kNumberOfBinsUnset,
  kNoCaseUsed,
  kDataPassError,
  kCancelled,
  kRepeatedRun,
  kListRefused,
  kRunOK,
  kEqualFrequencyCut,
  kEqualFrequencyNoCut,
  kCount
};

constexpr std::size_t kEventCount = static_cast<std::size_t>(Event::kCount);

const char* eventName(Event event);

class Events {
 public:
  void Count(Event event) { ++counts_[static_cast<std::size_t>(event)]; }
  void CountIf(bool happened, Event event) {
    counts_[static_cast<std::size_t>(event)] += happened ? 1U : 0U;
  }
  std::size_t Of(Event event) const { return counts_[static_cast<std::size_t>(event)]; }

 private:
  std::array<std::size_t, kEventCount> counts_{};
};

}  // namespace plain_model

#endif
