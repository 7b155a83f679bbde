#ifndef MCBINNING_ROUNDS_ATTRIBUTE_RUN_H
#define MCBINNING_ROUNDS_ATTRIBUTE_RUN_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "mcbinning/outputs.h"
#include "mcbinning/rounds.h"
#include "mcbinning/status.h"
#include "rounds/answer.h"
#include "rounds/interval_search.h"
#include "rounds/question.h"
#include "rounds/target_search.h"
#include "supervised/bins.h"

namespace MCBinning {

/// What the settings and the plan say about every attribute.
struct RoundSettings {
  bool isEqualFrequency = false;
  bool rightBorderClosed = true;
  int numberOfBins = 0;
  int distinctValueThreshold = 0;  // above which values are pre-binned; 0 and -1: never
  double smallBinThreshold = 0.0;
  int target = -1;
  bool countDistinct = true;
};

/// What the first answer says about the cases as a whole.
struct RoundTotals {
  double weight = 0.0;          // of all cases, with or without a target category
  std::size_t nCategories = 1;  // up to the highest code that occurs
  RoundLimits limits;
};

/// The run of one attribute, from the answer to its first question to its record.
class AttributeRun {
 public:
  /// `settings` are borrowed.
  AttributeRun(const RoundSettings& settings, int attribute);

  int Attribute() const { return attribute_; }
  bool IsFinished() const { return isStarted_ && Search() == nullptr; }
  double WishedWeight() const { return Search() == nullptr ? 0.0 : Search()->WishedWeight(); }

  /// Adds what the search waits for; the run is not finished and the first answer taken.
  void Ask(BINAttributeQuestion& question) const { Search()->Ask(question); }

  /// Takes the answer to the last question. False when it contradicts itself or an earlier one.
  bool Take(const AttributeAnswer& answer, const RoundTotals& totals);

  /// Once the run is finished; files the record and returns its status.
  MCStatus File(const RoundTotals& totals, BINOutput& output) const;
  MCStatus File(const RoundTotals& totals, EFBINOutput& output) const;

 private:
  const PieceSearch* Search() const;
  bool TakeFirst(const AttributeAnswer& answer, const RoundTotals& totals);
  void Finish(const RoundTotals& totals);
  void FinishPair(const RoundTotals& totals);
  void FinishEqualFrequency();
  std::uint32_t DistinctValues() const;

  /// What the records of both algorithms share.
  template <typename Record>
  void FillRecord(const RoundTotals& totals, Record& record) const;

  const RoundSettings& settings_;
  int attribute_;
  bool isStarted_ = false;
  double distinctValues_ = 0.0;
  double minimum_;
  double maximum_;
  double weight_ = 0.0;
  // One of the two while the run goes on.
  std::optional<IntervalSearch> intervals_;
  std::optional<TargetSearch> targets_;
  MCStatus status_;
  Bins bins_;  // of equal frequency: cut points, and each bin's weight for its counts
};

}  // namespace MCBinning

#endif
