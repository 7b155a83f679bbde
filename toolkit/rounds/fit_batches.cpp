#include "toolkit/rounds/fit_batches.h"

#include "toolkit/fit/column_cases.h"
#include "toolkit/rounds/first_borders.h"
#include "toolkit/rounds/local_engine.h"
#include "toolkit/rounds/rounds_pass.h"

namespace mcbin {

Model fitBatches(const FitRequest& request, BatchReader& batches, FitWatch watch,
                 std::uint64_t roundsFrom, FitTimings& timings) {
  ColumnCases cases(batches, request.naTexts);
  SampledCases sampled(cases);
  watch.binned = [&](const PassSetting& setting,
                     const FeedLayout& layout) -> std::optional<PassResult> {
    if (setting.scan.rows < roundsFrom) return std::nullopt;
    RoundsStart start;
    for (const std::size_t column : layout.attributeColumns) {
      start.firstBorders.push_back(
          firstBorders(sampled.Sample(column), setting.scan.categories.size()));
      start.exactBelow.push_back(batches.Heads()[column].exactBelow);
    }
    LocalEngine engine(batches, setting, layout, watch.jobs, watch.monitor);
    return runRounds(setting, layout, start, engine, watch.monitor);
  };
  return fitModel(request, sampled, watch, timings);
}

}  // namespace mcbin
