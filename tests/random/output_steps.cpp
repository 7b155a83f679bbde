#include <mcbinning/outputs.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "random/agreement.h"
#include "random/record_comparison.h"
#include "random/steps.h"
#include "support/display.h"

namespace mcbinning_tests {

namespace {

using plain_model::AttributeRecord;
using plain_model::PairRecord;

int drawIndex(Choices& choices) { return choices.OneIn(6) ? choices.AnyInt() : choices.Below(3); }

void fillShared(Choices& choices, plain_model::Record& record) {
  record.attribute = drawIndex(choices);
  record.status = choices.Flag() ? plain_model::warning(choices.Below(3)) : plain_model::Status();
  record.distinctValues = static_cast<unsigned>(choices.Below(9));
  record.totalWeight = choices.Number();
  record.totalWeightWithMissing = choices.Number();
  record.minimum = choices.Number();
  record.maximum = choices.Number();
}

MCBinning::MCStatus statusOf(const plain_model::Status& status) {
  return status.IsOK() ? MCBinning::MCStatus() : MCBinning::MCStatus(status.code, true);
}

bool file(Choices& choices, BINOutput& output, PairRecord& record) {
  fillShared(choices, record);
  record.target = drawIndex(choices);
  record.modelEntropy = choices.Number();
  std::set<double> cutPoints;
  for (int i = choices.Below(6); i > 0; --i) {
    const double drawn = choices.Number();
    cutPoints.insert(std::isnan(drawn) ? 0.0 : drawn);  // NaN has no place in a set
  }
  record.cutPoints.assign(cutPoints.begin(), cutPoints.end());
  const std::vector<double> counts = choices.Several(20, [&] { return choices.Number(); });
  const auto length = static_cast<std::ptrdiff_t>(counts.size() / (cutPoints.size() + 1));
  for (std::size_t bin = 0; bin <= cutPoints.size(); ++bin) {
    const auto begin = counts.begin() + static_cast<std::ptrdiff_t>(bin) * length;
    record.cellCounts.emplace_back(begin, begin + length);
  }
  const bool isPossible =
      record.attribute >= 0 && record.target >= 0 && record.attribute != record.target;
  compareStatuses("file a pair",
                  output.SetAttributeTargetResults(
                      statusOf(record.status), cutPoints, counts, record.attribute, record.target,
                      record.distinctValues, record.totalWeight, record.totalWeightWithMissing,
                      record.minimum, record.maximum, record.modelEntropy),
                  isPossible ? plain_model::Status() : plain_model::error(120013));
  return isPossible;
}

bool file(Choices& choices, EFBINOutput& output, AttributeRecord& record) {
  fillShared(choices, record);
  record.cutPoints = choices.Several(5, [&] { return choices.Number(); });
  record.cellCounts = choices.Several(20, [&] { return choices.Number(); });
  const bool isPossible = record.attribute >= 0;
  compareStatuses(
      "file an attribute",
      output.SetAttributeResults(statusOf(record.status), record.cutPoints, record.cellCounts,
                                 record.attribute, record.distinctValues, record.totalWeight,
                                 record.totalWeightWithMissing, record.minimum, record.maximum),
      isPossible ? plain_model::Status() : plain_model::error(120011));
  return isPossible;
}

template <typename Output, typename Record>
void stepsOf(Choices& choices) {
  Output output;
  std::vector<Record> model;
  for (int steps = choices.Below(8); steps > 0; --steps) {
    Record record;
    if (file(choices, output, record)) {
      model.push_back(record);
    }
  }
  compareOutputs(output, model);
  Output copy;
  copy = output;
  const Output again(copy);
  compare("copy of an output", DisplayOf(again), DisplayOf(output));
  Record later;
  file(choices, output, later);
  compareOutputs(again, model);
}

}  // namespace

void stepsOfOutputs(Choices& choices) {
  if (choices.Flag()) {
    stepsOf<BINOutput, PairRecord>(choices);
  } else {
    stepsOf<EFBINOutput, AttributeRecord>(choices);
  }
}

}  // namespace mcbinning_tests
