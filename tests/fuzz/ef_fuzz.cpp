// Makes rows, a number of bins and a total weight of any bytes and cuts them by the equal-frequency
// routine and by the plain one, which must give the same cut points and bin weights. Rows come
// either from cases, whatever their order, or as they are, whatever their values and weights.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/sorted_rows.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "plain_model/model.h"
#include "supervised/ef_preprocess.h"
#include "support/plain_rows.h"

namespace {

using fuzz::check;
using fuzz::isSame;
using MCBinning::SortedRows;
using PlainRow = SortedRows::Row;

// More would only repeat: every NaN row can be a cut point of as many steps as there are bins.
constexpr int kMostBins = 300;
constexpr int kMostRows = 300;

enum class WeightStyle { kOnes, kCounts, kTenths, kAny };

double makeWeight(fuzz::Input& input, WeightStyle style) {
  switch (style) {
    case WeightStyle::kOnes:
      return 1.0;
    case WeightStyle::kCounts:
      return input.Between(1, 9);
    case WeightStyle::kTenths:
      return 0.1 * input.Between(1, 30);
    default:
      return input.Number();
  }
}

mcbinning_tests::PlainCases makeCases(fuzz::Input& input) {
  const auto style = static_cast<WeightStyle>(input.Below(4));
  const bool smallValues = input.Flag();
  mcbinning_tests::PlainCases cases;
  while (!input.IsUsedUp() && cases.values.size() < kMostRows) {
    cases.values.push_back(smallValues ? input.Between(0, 15) : input.Number());
    cases.weights.push_back(makeWeight(input, style));
    cases.codes.push_back(static_cast<std::uint16_t>(input.Below(3)));
  }
  return cases;
}

bool isUsableWeight(double weight) { return std::isfinite(weight) && weight > 0.0; }

// The rows as a run makes them: sorted, their weights merged when they are small whole numbers.
SortedRows fillRows(const mcbinning_tests::PlainCases& cases) {
  SortedRows rows;
  rows.Fill(cases.Columns(), 3, MCBinning::ArePackable(cases.weights));
  return rows;
}

std::vector<plain_model::Row> plainRowsOf(const std::vector<PlainRow>& rows) {
  std::vector<plain_model::Row> plain;
  for (const PlainRow& row : rows) {
    plain.push_back({row.value, row.code, row.weight});
  }
  return plain;
}

double makeTotal(fuzz::Input& input, const std::vector<PlainRow>& rows) {
  double total = 0.0;
  for (const PlainRow& row : rows) {
    total += row.weight;
  }
  return input.OneIn(8) ? input.Number() * total : total;
}

void compare(const SortedRows& rows, const std::vector<PlainRow>& plain, fuzz::Input& input,
             int bins, bool closed) {
  const double total = makeTotal(input, plain);
  for (const bool withWeights : {false, true}) {
    std::vector<double> cutPoints;
    std::vector<double> weights;
    MCBinning::BINEFPreProcess routine(bins, closed);
    const bool done = withWeights ? routine.RunOverPairs(rows, cutPoints, weights, total)
                                  : routine.RunOverTriples(rows, cutPoints, weights, total);
    plain_model::Events events;
    const plain_model::EqualFrequencyCuts expected = plain_model::cutEqualFrequency(
        plainRowsOf(plain), total, bins, closed, withWeights, events);
    check(done == expected.done, "both cut or both refuse");
    check(isSame(cutPoints, expected.cutPoints), "same cut points");
    check(isSame(weights, expected.binWeights), "same bin weights");
    check(cutPoints.size() < static_cast<std::size_t>(std::max(bins, 1)), "not too many bins");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  fuzz::Input input(bytes, size);
  const int bins = input.Flag() ? input.Between(-1, 20) : input.Between(-1, kMostBins);
  const bool closed = input.Flag();
  const bool asTheyAre = input.Flag();
  mcbinning_tests::PlainCases cases = makeCases(input);
  if (asTheyAre) {
    std::vector<PlainRow> rows;
    for (std::size_t i = 0; i < cases.values.size(); ++i) {
      // One zero stands for both in a table.
      rows.push_back({cases.values[i] + 0.0, cases.codes[i], cases.weights[i]});
    }
    compare(SortedRows(rows), rows, input, bins, closed);
    return 0;
  }
  for (double& weight : cases.weights) {
    weight = isUsableWeight(weight) ? weight : 1.0;
  }
  compare(fillRows(cases), mcbinning_tests::plainRows(cases), input, bins, closed);
  return 0;
}
