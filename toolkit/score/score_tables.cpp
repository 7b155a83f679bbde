#include "toolkit/score/score_tables.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "toolkit/model/bin_labels.h"
#include "toolkit/tables/model_tables.h"
#include "toolkit/text/number_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr int kDigits = 4;
constexpr const char* kInFit = "in fit";

std::string fixed(double value) { return fixedNumber(value, kDigits); }

ScoreRow totalOf(const std::vector<ScoreRow>& rows) {
  ScoreRow total;
  total.name = "total";
  std::vector<WeightedCounts> counts;
  std::vector<WeightedCounts> inFit;
  for (const ScoreRow& row : rows) {
    total.counts.weight += row.counts.weight;
    total.inFit.weight += row.inFit.weight;
    counts.push_back(row.counts);
    inFit.push_back(row.inFit);
  }
  total.counts.classWeights = sumOverBins(counts);
  total.inFit.classWeights = sumOverBins(inFit);
  return total;
}

std::vector<std::string> countCells(const ScoreRow& row, const ScoreRow& total) {
  std::vector<std::string> cells = {row.bounds ? row.bin : "", row.name,
                                    weightText(row.counts.weight),
                                    shareText(row.counts.weight, total.counts.weight),
                                    shareText(row.inFit.weight, total.inFit.weight)};
  for (std::size_t c = 0; c < row.counts.classWeights.size(); ++c) {
    cells.push_back(shareText(row.counts.classWeights[c], row.counts.weight));
    cells.push_back(shareText(row.inFit.classWeights[c], row.inFit.weight));
  }
  return cells;
}

std::vector<std::string> rowHeader(const ModelScore& score, std::size_t attribute) {
  const Model& counted = score.counted;
  std::vector<std::string> header = {"#", visibleText(counted.attributes[attribute].name), "weight",
                                     "share", kInFit};
  if (counted.target) {
    for (const std::string& category : counted.target->categories) {
      header.insert(header.end(), {visibleText(category) + " %", kInFit});
    }
  }
  if (eventOf(counted)) header.insert(header.end(), {"WoE", kInFit, "IV", kInFit});
  header.emplace_back("PSI");
  return header;
}

std::string shareMissing(const AttributeModel& attribute) {
  return shareText(attribute.missingCases.weight + attribute.userMissingCases.weight,
                   attribute.WeightOfAll());
}

}  // namespace

std::vector<ScoreRow> scoreRows(const Model& model, const ModelScore& score,
                                std::size_t attribute) {
  const AttributeModel& fitted = model.attributes[attribute];
  const AttributeModel& counted = score.counted.attributes[attribute];
  std::vector<ScoreRow> rows;
  for (std::size_t bin = 0; bin < fitted.bins.size(); ++bin) {
    rows.push_back({std::to_string(bin), intervalText(fitted.cutPoints, model.closedSide, bin),
                    boundsOf(fitted.cutPoints, bin), counted.bins[bin], fitted.bins[bin]});
  }
  for (const auto& [name, member] : kBesideBins) {
    if (member == &AttributeModel::unbinnedCases) continue;
    rows.push_back({name, name, std::nullopt, counted.*member, fitted.*member});
  }
  const auto evidence = evidenceOf(score.counted, counted);
  const auto inFit = evidenceOf(model, fitted);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    rows[row].stabilityIndex = score.shifts[attribute].rowIndices[row];
    if (!evidence) continue;
    rows[row].evidence = evidence->rows[row];
    rows[row].evidenceInFit = inFit->rows[row];
  }
  return rows;
}

std::vector<std::size_t> rankByStability(const ModelScore& score) {
  std::vector<std::size_t> order(score.shifts.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return score.shifts[a].stabilityIndex > score.shifts[b].stabilityIndex;
  });
  return order;
}

std::string scoreSummary(const Model& model, const ModelScore& score) {
  return summaryText(score.counted, "Score of") + summaryText(model);
}

TextTable scoreRanking(const Model& model, const ModelScore& score) {
  const bool isBinary = eventOf(score.counted).has_value();
  std::vector<std::string> header = {"#", "attribute", "PSI", "stability", "missing", kInFit};
  if (score.counted.target) header.insert(header.end(), {"gain", kInFit});
  if (isBinary) header.insert(header.end(), {"IV", kInFit});
  header.emplace_back("remark");
  TextTable table(header);
  table.SetAlign(0, TextTable::Align::Right);
  for (const std::size_t left : {std::size_t{1}, std::size_t{3}, header.size() - 1}) {
    table.SetAlign(left, TextTable::Align::Left);
  }
  std::size_t rank = 0;
  for (const std::size_t a : rankByStability(score)) {
    const AttributeModel& counted = score.counted.attributes[a];
    const AttributeModel& fitted = model.attributes[a];
    const double index = score.shifts[a].stabilityIndex;
    std::vector<std::string> cells = {
        std::to_string(++rank), visibleText(counted.name),
        fixed(index),           nameOf(kStabilities, stabilityOf(index)),
        shareMissing(counted),  shareMissing(fitted)};
    if (score.counted.target) {
      cells.push_back(fixed(counted.InformationGain()));
      cells.push_back(fixed(fitted.InformationGain()));
    }
    if (isBinary) {
      cells.push_back(fixed(evidenceOf(score.counted, counted)->informationValue));
      cells.push_back(fixed(evidenceOf(model, fitted)->informationValue));
    }
    cells.push_back(unseenText(model, score, a));
    table.AddRow(std::move(cells));
  }
  return table;
}

std::string shiftText(const ModelScore& score, std::size_t attribute) {
  const double index = score.shifts[attribute].stabilityIndex;
  return fmt::format("{}: stability index {}, {}",
                     visibleText(score.counted.attributes[attribute].name), fixed(index),
                     nameOf(kStabilities, stabilityOf(index)));
}

std::string unseenText(const Model& model, const ModelScore& score, std::size_t attribute) {
  const AttributeModel& fitted = model.attributes[attribute];
  const AttributeShift& shift = score.shifts[attribute];
  std::vector<std::string> texts;
  if (shift.weightBelow > 0.0) {
    texts.push_back(fmt::format("weight {} below {}, the smallest value of the fit",
                                weightText(shift.weightBelow), shortestNumber(*fitted.minimum)));
  }
  if (shift.weightAbove > 0.0) {
    texts.push_back(fmt::format("weight {} above {}, the largest value of the fit",
                                weightText(shift.weightAbove), shortestNumber(*fitted.maximum)));
  }
  for (const ScoreRow& row : scoreRows(model, score, attribute)) {
    if (row.counts.weight == 0.0 || row.inFit.weight > 0.0) continue;
    texts.push_back(fmt::format("weight {} {}{}, none in the fit", weightText(row.counts.weight),
                                row.bounds ? "in " : "", row.name));
  }
  return fmt::format("{}", fmt::join(texts, "; "));
}

TextTable scoreTable(const Model& model, const ModelScore& score, std::size_t attribute) {
  TextTable table(rowHeader(score, attribute));
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  std::vector<ScoreRow> rows = scoreRows(model, score, attribute);
  const ScoreRow total = totalOf(rows);
  double value = 0.0;
  double valueInFit = 0.0;
  for (const ScoreRow& row : rows) {
    if (!row.bounds && row.counts.weight == 0.0 && row.inFit.weight == 0.0) continue;
    std::vector<std::string> cells = countCells(row, total);
    if (row.evidence) {
      value += row.evidence->informationValue;
      valueInFit += row.evidenceInFit->informationValue;
      cells.insert(
          cells.end(),
          {fixed(row.evidence->weightOfEvidence), fixed(row.evidenceInFit->weightOfEvidence),
           fixed(row.evidence->informationValue), fixed(row.evidenceInFit->informationValue)});
    }
    cells.push_back(fixed(row.stabilityIndex));
    table.AddRow(std::move(cells));
  }
  std::vector<std::string> cells = countCells(total, total);
  if (eventOf(score.counted)) {
    cells.insert(cells.end(), {"", "", fixed(value), fixed(valueInFit)});
  }
  cells.push_back(fixed(score.shifts[attribute].stabilityIndex));
  table.AddRow(std::move(cells));
  return table;
}

}  // namespace mcbin
