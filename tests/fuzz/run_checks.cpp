#include "fuzz/run_checks.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <numeric>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "random/agreement.h"

namespace mcbinning_tests {

namespace {

// Whole weights below this add up exactly.
constexpr double kExact = 0x1p53;

// Above it a midpoint of two values overflows.
constexpr double kHalfOfLargest = std::numeric_limits<double>::max() / 2;

bool isWhole(const std::vector<double>& weights) {
  return std::all_of(weights.begin(), weights.end(), [](double weight) {
    return weight == std::floor(weight) && std::abs(weight) < kExact;
  });
}

bool isNear(double left, double right) {
  return std::abs(left - right) <= 1e-9 * std::max(std::abs(left), std::abs(right));
}

// Neither NaN nor so great that midpoints and outer boundaries are beyond it.
template <typename Record>
bool hasOrdinaryRange(const Record& record) {
  return std::abs(record.GetMinimum()) <= kHalfOfLargest &&
         std::abs(record.GetMaximum()) <= kHalfOfLargest;
}

template <typename Record>
void checkOf(const Record& record, bool holds, const char* what) {
  if (!holds) {
    record.Display(std::cerr);
  }
  check(holds, what);
}

template <typename Record>
void checkShared(const Record& record) {
  const std::vector<double>& cuts = record.GetCutPoints();
  checkOf(record, record.GetTotalWeight() <= record.GetTotalWeightWithMissing(),
          "missing cases weigh");
  const auto descends = [](double left, double right) { return !(left < right); };
  if (hasOrdinaryRange(record)) {
    checkOf(record, cuts.empty() || cuts.size() < record.GetNDistinctValues(), "bins have values");
    checkOf(record, std::adjacent_find(cuts.begin(), cuts.end(), descends) == cuts.end(),
            "cuts ascend");
    checkOf(record, cuts.empty() || cuts.front() >= record.GetMinimum(), "cuts from the minimum");
    checkOf(record, cuts.empty() || cuts.back() <= record.GetMaximum(), "cuts to the maximum");
  }
  std::ostringstream text;
  record.Display(text);
  checkOf(record, !text.str().empty(), "record is displayed");
}

void checkEntropy(const BINAttributeTargetResults& record) {
  const double entropy = record.GetModelEntropy();
  const bool isMissing = entropy == MCMV::gMissingValue;
  checkOf(record, isMissing || (entropy >= 0.0 && entropy < 8.000001),
          "entropy of at most 256 categories");
}

void checkRecord(const BINAttributeTargetResults& record) {
  checkShared(record);
  const std::vector<double>& cuts = record.GetCutPoints();
  const auto& counts = record.GetCellCounts();
  checkOf(record, counts.size() == cuts.size() + 1, "a row of counts per bin");
  checkOf(record,
          std::none_of(cuts.begin(), cuts.end(), [](double cut) { return std::isnan(cut); }),
          "no cut is NaN");
  double total = 0.0;
  bool areWhole = record.GetTotalWeight() < kExact;
  for (const std::vector<double>& bin : counts) {
    checkOf(record, bin.size() == counts.front().size(), "rows of counts are equally long");
    checkOf(record, bin.size() != 1, "no total without categories");
    areWhole = areWhole && isWhole(bin);
    if (!bin.empty()) {
      // Merged bins add up their totals, so with fractions the last bits may differ.
      const double sum = std::accumulate(bin.begin() + 1, bin.end(), 0.0);
      checkOf(record, !(std::abs(bin[0] - sum) > 1e-9 * record.GetTotalWeight()), "a bin's total");
      total += bin[0];
    }
  }
  const bool wasSearched = !counts.front().empty();
  if (wasSearched && hasOrdinaryRange(record) && record.GetTotalWeight() < 1e300) {
    checkOf(record, isNear(total, record.GetTotalWeight()), "bins make up the total");
  }
  if (areWhole) {
    checkEntropy(record);
  }
}

void checkRecord(const BINAttributeResults& record, bool cellsAreWhole) {
  checkShared(record);
  const std::vector<double>& counts = record.GetCellCounts();
  checkOf(record, counts.empty() || counts.size() == record.GetCutPoints().size() + 1,
          "a count per bin");
  checkOf(record, !counts.empty() || record.GetCutPoints().empty(), "no cut without counts");
  const double total = std::accumulate(counts.begin(), counts.end(), 0.0);
  // Values that are neighbours as doubles have no midpoint of their own, and weights are then lost.
  if (!counts.empty() && cellsAreWhole && record.GetTotalWeight() < kExact) {
    checkOf(record, isSame(total, record.GetTotalWeight()), "bins make up the total");
  }
}

// One record for each pair asked for, in order.
void checkPairs(const std::vector<BINAttributeTargetResults>& records, const Request& request,
                bool isComplete) {
  if (!request.attributes) {
    std::set<std::pair<int, int>> pairs;
    for (const BINAttributeTargetResults& record : records) {
      pairs.emplace(record.GetAttributeIndex(), record.GetTargetIndex());
    }
    check(pairs.size() == records.size(), "a pair of the list has one record");
    return;
  }
  check(isComplete ? records.size() == request.attributes->size()
                   : records.size() <= request.attributes->size(),
        "as many records as pairs");
  for (std::size_t i = 0; i < records.size(); ++i) {
    check(records[i].GetAttributeIndex() == (*request.attributes)[i], "attribute asked for");
    check(!request.targets || records[i].GetTargetIndex() == (*request.targets)[i],
          "target asked for");
  }
}

void checkPairs(const std::vector<BINAttributeResults>& records, const Request& request,
                bool isComplete) {
  if (!request.attributes) {
    for (std::size_t i = 1; i < records.size(); ++i) {
      check(records[i - 1].GetAttributeIndex() < records[i].GetAttributeIndex(), "in list order");
    }
    return;
  }
  check(isComplete ? records.size() == request.attributes->size()
                   : records.size() <= request.attributes->size(),
        "as many records as attributes");
  for (std::size_t i = 0; i < records.size(); ++i) {
    check(records[i].GetAttributeIndex() == (*request.attributes)[i], "attribute asked for");
  }
}

template <typename Record, typename Output>
std::vector<Record> recordsFrom(const Output& output, std::size_t first) {
  std::vector<Record> records;
  output.GetAllCutPoints(records);
  check(records.size() >= first, "records stay");
  records.erase(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(first));
  std::ostringstream text;
  output.Display(text);
  Output copy(output);
  std::ostringstream textOfCopy;
  copy = output;
  copy.Display(textOfCopy);
  check(text.str() == textOfCopy.str(), "a copy says the same");
  return records;
}

}  // namespace

void checkRecords(const BINOutput& output, std::size_t first, const Request& request,
                  const RunFacts& facts) {
  const auto records = recordsFrom<BINAttributeTargetResults>(output, first);
  checkPairs(records, request, facts.isComplete);
  for (const BINAttributeTargetResults& record : records) {
    checkRecord(record);
    std::vector<BINAttributeTargetResults> ofAttribute;
    output.GetAttributeCutPoints(record.GetAttributeIndex(), ofAttribute);
    check(ofAttribute.empty() == (record.GetAttributeIndex() < 0), "found by its attribute");
  }
}

void checkRecords(const EFBINOutput& output, std::size_t first, const Request& request,
                  const RunFacts& facts) {
  const auto records = recordsFrom<BINAttributeResults>(output, first);
  checkPairs(records, request, facts.isComplete);
  for (const BINAttributeResults& record : records) {
    checkRecord(record, facts.cellsAreWhole);
    BINAttributeResults found;
    output.GetAttributeCutPoints(record.GetAttributeIndex(), found);
    check(record.GetAttributeIndex() < 0 || found.GetAttributeIndex() == record.GetAttributeIndex(),
          "found by its attribute");
  }
}

bool hasWholeCells(const Request& request) {
  constexpr double kModerate = 1e6;
  const auto isOrdinary = [](double cell) {
    return cell == MCMV::gMissingValue || (cell == std::floor(cell) && std::abs(cell) < kModerate);
  };
  return std::all_of(request.cases.begin(), request.cases.end(), [&isOrdinary](const Case& cells) {
    return std::all_of(cells.begin(), cells.end(), isOrdinary);
  });
}

}  // namespace mcbinning_tests
