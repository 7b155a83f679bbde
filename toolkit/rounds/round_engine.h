/// Who answers questions about cases that nobody holds.
#ifndef MCBIN_TOOLKIT_ROUNDS_ROUND_ENGINE_H
#define MCBIN_TOOLKIT_ROUNDS_ROUND_ENGINE_H

#include <mcbinning/rounds.h>

#include <string>

#include "toolkit/fit/case_reader.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// Goes over the cases once for every question. Failures are exceptions.
class RoundEngine {
 public:
  RoundEngine() = default;
  RoundEngine(const RoundEngine&) = delete;
  RoundEngine& operator=(const RoundEngine&) = delete;
  virtual ~RoundEngine() = default;

  /// `task` is what to call the round while it goes on.
  virtual BINRoundAnswer Answer(const BINRoundQuestion& question, const std::string& task) = 0;

  /// Of the last answer.
  virtual CaseCounts Cases() const = 0;

  /// What the user declared missing and no case has, in words; known after the first answer.
  virtual Notes NeverMet() const = 0;
};

}  // namespace mcbin

#endif
