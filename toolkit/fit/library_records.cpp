#include "toolkit/fit/library_records.h"

#include <fmt/format.h>
#include <mccomvor/missing_value.h>

#include <optional>
#include <stdexcept>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/fit/bin_check.h"
#include "toolkit/fit/status_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// -0.0 is 0.0, since not every engine tells the two apart.
std::optional<double> unlessMissing(double value) {
  if (value == MCMV::gMissingValue) return std::nullopt;
  return value + 0.0;
}

/// What the settings of both algorithms share.
template <class Settings>
void setAnyBins(const Model& model, Settings& settings) {
  require(settings.SetNumberOfBins(model.options.bins), "the number of bins");
  settings.SetRightBorderClosed(model.closedSide == ClosedSide::Right);
}

/// What the records of both algorithms share. Sizes the bins but does not fill them.
template <class Results>
void fileResults(const Results& results, AttributeModel& attribute) {
  attribute.status = attributeStatus(results.GetStatus());
  attribute.cutPoints = results.GetCutPoints();
  attribute.bins.resize(attribute.cutPoints.size() + 1);
  attribute.distinctValues = results.GetNDistinctValues();
  attribute.totalWeight = results.GetTotalWeight();
  attribute.totalWeightWithMissing = results.GetTotalWeightWithMissing();
  attribute.minimum = unlessMissing(results.GetMinimum());
  attribute.maximum = unlessMissing(results.GetMaximum());
}

}  // namespace

void require(bool accepted, const char* what) {
  if (!accepted) throw std::logic_error(fmt::format("the library refused {}", what));
}

void setBins(const Model& model, BINSettings& settings) {
  setAnyBins(model, settings);
  require(settings.SetNumDistinctValueThreshold(model.options.distinctValueThreshold),
          "the threshold of distinct values");
  require(settings.SetSmallBinDetectionThreshold(model.options.smallBinThreshold),
          "the threshold of small bins");
}

void setBins(const Model& model, EFBINSettings& settings) { setAnyBins(model, settings); }

void fileRecord(const BINAttributeTargetResults& record, std::size_t categories,
                AttributeModel& attribute) {
  fileResults(record, attribute);
  const auto& rows = record.GetCellCounts();
  require(rows.size() == attribute.bins.size(), "to count every bin");
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    // An attribute that was not searched has an empty row; categories that no used case carries
    // may lack their columns.
    std::vector<double> row = rows[bin];
    row.resize(categories + 1, 0.0);
    attribute.bins[bin].weight = row.front();
    attribute.bins[bin].classWeights.assign(row.begin() + 1, row.end());
  }
  attribute.entropyAfter = unlessMissing(record.GetModelEntropy());
  if (attribute.entropyAfter) {
    attribute.entropyBefore = entropyOf(sumOverBins(attribute.bins));
  }
  dropImpossibleCuts(attribute);
}

void fileRecord(const BINAttributeResults& record, AttributeModel& attribute) {
  fileResults(record, attribute);
  const std::vector<double>& weights = record.GetCellCounts();
  require(weights.empty() || weights.size() == attribute.bins.size(), "to count every bin");
  for (std::size_t bin = 0; bin < weights.size(); ++bin) {
    attribute.bins[bin].weight = weights[bin];
  }
  dropImpossibleCuts(attribute);
}

void failWithoutCases(const Model& model, std::uint64_t casesRead) {
  if (!model.weight || casesRead == 0) {
    throw DataError("no case can be used: there is none");
  }
  const bool truncates = model.weight->rounding == WeightRounding::Truncate;
  throw DataError(fmt::format(
      "no case can be used: every weight in column {} is missing or, {} to a whole number, not "
      "positive{}",
      excerpt(model.weight->name), truncates ? "truncated" : "rounded",
      truncates ? " (--weight-rounding round rounds it)" : ""));
}

}  // namespace mcbin
