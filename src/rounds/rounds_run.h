#ifndef MCBINNING_ROUNDS_ROUNDS_RUN_H
#define MCBINNING_ROUNDS_ROUNDS_RUN_H

#include <cstddef>
#include <deque>
#include <optional>

#include "mcbinning/outputs.h"
#include "mcbinning/rounds.h"
#include "mcbinning/status.h"
#include "rounds/attribute_run.h"

namespace MCBinning {

/// The run behind BINRounds. A failed allocation passes through, after which it is of no more use.
class RoundsRun {
 public:
  RoundsRun(const RoundSettings& settings, const BINRoundsPlan& plan);
  RoundsRun(const RoundsRun&) = delete;
  RoundsRun& operator=(const RoundsRun&) = delete;

  bool IsFinished() const;

  /// Takes an answer and makes its question the next one, without attributes when that was the
  /// last.
  MCStatus Take(const BINRoundAnswer& answer, BINRoundQuestion& question);

  /// Once the run is finished; one of the two outputs gets the records.
  MCStatus File(BINOutput& output, EFBINOutput& efOutput) const;

  BINRoundsProgress Progress() const;

 private:
  MCStatus TakeCases(const BINRoundAnswer& answer);
  void TakeFirstCases(const BINRoundAnswer& answer);
  MCStatus TakeAttribute(const BINAttributeQuestion& question, const BINAttributeAnswer& answer);

  RoundSettings settings_;
  std::size_t nCategories_;
  RoundTotals totals_;
  std::deque<AttributeRun> attributes_;  // which cannot be moved
  std::optional<BINRoundAnswer> cases_;  // of the first answer, without its attributes
  BINRoundsProgress progress_;
};

}  // namespace MCBinning

#endif
