/// Rounds over a table that is read again for each.
#ifndef MCBIN_TOOLKIT_ROUNDS_LOCAL_ENGINE_H
#define MCBIN_TOOLKIT_ROUNDS_LOCAL_ENGINE_H

#include <mcbinning/user_missing.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "toolkit/columns/column.h"
#include "toolkit/fit/binning_pass.h"
#include "toolkit/fit/case_reader.h"
#include "toolkit/monitor.h"
#include "toolkit/rounds/round_engine.h"

namespace mcbin {

/// Several threads take the batches in turn and count each for itself; what they counted is added
/// up at the end. Memory grows with the question and the number of threads, not with the rows:
/// distinct values that are too many lie in temporary files.
class LocalEngine : public RoundEngine {
 public:
  /// Everything is borrowed. `jobs` is at least 1.
  LocalEngine(BatchReader& batches, const PassSetting& setting, const FeedLayout& layout,
              std::size_t jobs, Monitor& monitor);

  BINRoundAnswer Answer(const BINRoundQuestion& question, const std::string& task) override;
  CaseCounts Cases() const override { return cases_; }
  Notes NeverMet() const override { return neverMet_; }

 private:
  BatchReader& batches_;
  const PassSetting& setting_;
  const FeedLayout& layout_;
  std::size_t jobs_;
  Monitor& monitor_;
  std::vector<BINNumericUserMissing> userMissing_;  ///< By attribute.
  CaseCounts cases_;
  Notes neverMet_;
  bool isFirst_ = true;
};

}  // namespace mcbin

#endif
