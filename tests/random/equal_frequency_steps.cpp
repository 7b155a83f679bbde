#include "random/equal_frequency_steps.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/sorted_rows.h"
#include "plain_model/model.h"
#include "random/agreement.h"
#include "supervised/ef_preprocess.h"
#include "support/plain_rows.h"

namespace mcbinning_tests {

namespace {

using MCBinning::SortedRows;
using plain_model::Row;

// More would only repeat: every NaN row can be a cut point of as many steps as there are bins.
constexpr int kMostBins = 300;
constexpr int kMostRows = 300;

enum class WeightStyle { kOnes, kCounts, kTenths, kAny };

double makeWeight(Choices& choices, WeightStyle style) {
  switch (style) {
    case WeightStyle::kOnes:
      return 1.0;
    case WeightStyle::kCounts:
      return choices.Between(1, 9);
    case WeightStyle::kTenths:
      return 0.1 * choices.Between(1, 30);
    default:
      return choices.Number();
  }
}

PlainCases makeCases(Choices& choices) {
  const auto style = static_cast<WeightStyle>(choices.Below(4));
  const bool smallValues = choices.Flag();
  PlainCases cases;
  for (int left = choices.Below(kMostRows); left > 0 && !choices.IsUsedUp(); --left) {
    cases.values.push_back(smallValues ? choices.Between(0, 15) : choices.Number());
    cases.weights.push_back(makeWeight(choices, style));
    cases.codes.push_back(static_cast<std::uint16_t>(choices.Below(3)));
  }
  return cases;
}

bool isUsableWeight(double weight) { return std::isfinite(weight) && weight > 0.0; }

// The rows as a run makes them: sorted, their weights merged when they are small whole numbers.
SortedRows fillRows(const PlainCases& cases) {
  SortedRows rows;
  rows.Fill(cases.Columns(), 3, MCBinning::arePackable(cases.weights));
  return rows;
}

double makeTotal(Choices& choices, const std::vector<Row>& rows) {
  double total = 0.0;
  for (const Row& row : rows) {
    total += row.weight;
  }
  return choices.OneIn(8) ? choices.Number() * total : total;
}

void compareCuts(const SortedRows& rows, const std::vector<Row>& plain, Choices& choices, int bins,
                 bool closed) {
  const double total = makeTotal(choices, plain);
  for (const bool withWeights : {false, true}) {
    std::vector<double> cutPoints;
    std::vector<double> weights;
    MCBinning::BINEFPreProcess routine(bins, closed);
    const bool done = withWeights ? routine.RunOverPairs(rows, cutPoints, weights, total)
                                  : routine.RunOverTriples(rows, cutPoints, weights, total);
    plain_model::Events events;
    const plain_model::EqualFrequencyCuts expected =
        plain_model::cutEqualFrequency(plain, total, bins, closed, withWeights, events);
    compare("both cut or both refuse", done, expected.done);
    compare("cut points", cutPoints, expected.cutPoints);
    compare("bin weights", weights, expected.binWeights);
    check(cutPoints.size() < static_cast<std::size_t>(std::max(bins, 1)), "not too many bins");
  }
}

}  // namespace

void stepsOfEqualFrequency(Choices& choices) {
  const int bins = choices.Flag() ? choices.Between(-1, 20) : choices.Between(-1, kMostBins);
  const bool closed = choices.Flag();
  const bool asTheyAre = choices.Flag();
  PlainCases cases = makeCases(choices);
  if (asTheyAre) {
    std::vector<Row> rows;
    std::vector<SortedRows::Row> sorted;
    for (std::size_t i = 0; i < cases.values.size(); ++i) {
      // One zero stands for both in a table.
      rows.push_back({cases.values[i] + 0.0, cases.codes[i], cases.weights[i]});
      sorted.push_back({rows[i].value, rows[i].code, rows[i].weight});
    }
    return compareCuts(SortedRows(sorted), rows, choices, bins, closed);
  }
  for (double& weight : cases.weights) {
    weight = isUsableWeight(weight) ? weight : 1.0;
  }
  compareCuts(fillRows(cases), plainRows(cases), choices, bins, closed);
}

}  // namespace mcbinning_tests
