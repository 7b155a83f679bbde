/// The library's algorithms over cases that only an engine holds.
#ifndef MCBIN_TOOLKIT_ROUNDS_ROUNDS_PASS_H
#define MCBIN_TOOLKIT_ROUNDS_ROUNDS_PASS_H

#include <vector>

#include "toolkit/fit/binning_pass.h"
#include "toolkit/fit/case_reader.h"
#include "toolkit/monitor.h"
#include "toolkit/rounds/round_engine.h"

namespace mcbin {

/// What is known of the attributes, in their order, before the first question.
struct RoundsStart {
  /// BINRoundsAttribute::firstBorders; may be none.
  std::vector<std::vector<double>> firstBorders;
  /// ColumnHead::exactBelow.
  std::vector<double> exactBelow;
};

/// As runPass, and with the same result, by questions to `engine`. UsageError when cut points are
/// given. DataError, too, for a total weight of 2^53 or more, for values whose doubles do not
/// tell them apart, and when the cases change from one question to the next.
PassResult runRounds(const PassSetting& setting, const FeedLayout& layout, const RoundsStart& start,
                     RoundEngine& engine, Monitor& monitor);

}  // namespace mcbin

#endif
