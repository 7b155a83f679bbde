#include "toolkit/tables/model_tables.h"

#include <fmt/format.h>

#include <utility>

#include "toolkit/model/bin_labels.h"
#include "toolkit/model/evidence.h"
#include "toolkit/text/number_text.h"
#include "toolkit/text/text_table.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr int kEntropyDigits = 4;
constexpr int kEvidenceDigits = 4;

std::string plural(std::uint64_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string numberOrDash(const std::optional<double>& value) {
  return value ? shortestNumber(*value) : "-";
}

void addCounts(const Model& model, const WeightedCounts& counts, double total,
               std::vector<std::string>& cells) {
  cells.push_back(weightText(counts.weight));
  cells.push_back(shareText(counts.weight, total));
  if (!model.target) return;
  for (double weight : counts.classWeights) {
    cells.push_back(weightText(weight));
    cells.push_back(shareText(weight, counts.weight));
  }
}

std::string targetText(const Model& model) {
  const TargetModel& target = *model.target;
  double total = target.missingWeight;
  for (double weight : target.classWeights) total += weight;
  std::string text = "Target " + visibleText(target.name) + ":";
  const char* separator = " ";
  for (std::size_t c = 0; c < target.categories.size(); ++c) {
    text +=
        fmt::format("{}{} ({}, {})", separator, visibleText(target.categories[c]),
                    weightText(target.classWeights[c]), shareText(target.classWeights[c], total));
    separator = ", ";
  }
  if (target.missingWeight != 0.0) {
    text += fmt::format(", missing ({}, {}), counted in no bin", weightText(target.missingWeight),
                        shareText(target.missingWeight, total));
  }
  if (const auto event = eventOf(model)) {
    text += "; the event is " + visibleText(target.categories[*event]);
  }
  return text + "\n";
}

std::vector<std::string> binHeader(const Model& model, const AttributeModel& attribute) {
  std::vector<std::string> header = {"#", visibleText(attribute.name), "weight", "share"};
  if (!model.target) return header;
  const std::optional<std::size_t> event = eventOf(model);
  const std::vector<std::string>& categories = model.target->categories;
  for (std::size_t c = 0; c < categories.size(); ++c) {
    header.push_back(visibleText(categories[c]));
    header.emplace_back(event == c ? "event rate" : "%");
  }
  if (event) header.insert(header.end(), {"WoE", "IV"});
  return header;
}

/// The bins and what stands beside them, with their names.
std::vector<std::pair<std::vector<std::string>, WeightedCounts>> rowsOf(
    const Model& model, const AttributeModel& attribute) {
  std::vector<std::pair<std::vector<std::string>, WeightedCounts>> rows;
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    rows.push_back({{std::to_string(bin), intervalText(attribute.cutPoints, model.closedSide, bin)},
                    attribute.bins[bin]});
  }
  for (const auto& [name, member] : kBesideBins) rows.push_back({{"", name}, attribute.*member});
  return rows;
}

void addTotal(const Model& model, const AttributeModel& attribute, double informationValue,
              TextTable& table) {
  std::vector<WeightedCounts> rows = attribute.bins;
  for (const CasesBesideBins& beside : kBesideBins) rows.push_back(attribute.*beside.counts);
  const double total = attribute.WeightOfAll();
  std::vector<std::string> cells = {"", "total"};
  addCounts(model, {total, sumOverBins(rows)}, total, cells);
  cells.insert(cells.end(), {"", fixedNumber(informationValue, kEvidenceDigits)});
  table.AddRow(std::move(cells));
}

}  // namespace

TextTable binTable(const Model& model, const AttributeModel& attribute) {
  TextTable table(binHeader(model, attribute));
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  const double total = attribute.WeightOfAll();
  const auto evidence = evidenceOf(model, attribute);
  std::size_t row = 0;
  for (auto& [cells, counts] : rowsOf(model, attribute)) {
    const std::size_t position = row++;
    if (position >= attribute.bins.size() && counts.weight == 0.0) continue;
    addCounts(model, counts, total, cells);
    if (evidence) {
      const Evidence& bin = evidence->rows[position];
      cells.push_back(fixedNumber(bin.weightOfEvidence, kEvidenceDigits));
      cells.push_back(fixedNumber(bin.informationValue, kEvidenceDigits));
    }
    table.AddRow(std::move(cells));
  }
  if (evidence) addTotal(model, attribute, evidence->informationValue, table);
  return table;
}

TextTable rankingTable(const Model& model) {
  const bool isBinary = eventOf(model).has_value();
  std::vector<std::string> header = {"#", "attribute", "bins", "distinct", "min", "max", "missing"};
  if (model.target) header.insert(header.end(), {"gain", kGainOverAll});
  if (isBinary) header.insert(header.end(), {"IV", "trend"});
  header.emplace_back("remark");
  TextTable table(header);
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  table.SetAlign(header.size() - 1, TextTable::Align::Left);
  if (isBinary) table.SetAlign(header.size() - 2, TextTable::Align::Left);
  std::size_t rank = 0;
  for (std::size_t index : rankByGain(model)) {
    const AttributeModel& attribute = model.attributes[index];
    std::vector<std::string> cells = {
        std::to_string(++rank),
        visibleText(attribute.name),
        std::to_string(attribute.bins.size()),
        std::to_string(attribute.distinctValues),
        numberOrDash(attribute.minimum),
        numberOrDash(attribute.maximum),
        shareText(attribute.missingCases.weight + attribute.userMissingCases.weight,
                  attribute.WeightOfAll())};
    if (model.target) {
      cells.push_back(
          attribute.entropyAfter ? fixedNumber(attribute.InformationGain(), kEntropyDigits) : "-");
      cells.push_back(fixedNumber(attribute.GainOverAllCases(), kEntropyDigits));
    }
    if (const auto evidence = evidenceOf(model, attribute)) {
      cells.push_back(fixedNumber(evidence->informationValue, kEvidenceDigits));
      cells.emplace_back(nameOf(kTrends, trendOf(attribute, *evidence)));
    }
    cells.push_back(visibleText(attribute.status.reason));
    table.AddRow(std::move(cells));
  }
  return table;
}

std::string summaryText(const Model& model) {
  return summaryText(model, model.target ? "Supervised binning of" : "Equal-frequency binning of");
}

std::string summaryText(const Model& model, const std::string& heading) {
  std::string text =
      fmt::format("{} {}: {}, {} used", heading,
                  model.source.data.empty() ? "the data" : visibleText(model.source.data),
                  plural(model.cases.read, "case"), model.cases.used);
  if (model.cases.droppedForWeight > 0) {
    text += fmt::format(", {} dropped for their weight", model.cases.droppedForWeight);
  }
  text += "\n";
  if (model.weight) {
    text +=
        fmt::format("Weight {}, {} to whole numbers\n", visibleText(model.weight->name),
                    model.weight->rounding == WeightRounding::Truncate ? "truncated" : "rounded");
  }
  return model.target ? text + targetText(model) : text;
}

std::string overviewText(const Model& model) {
  return summaryText(model) +
         (model.target ? "\nAttributes by gain over all cases\n" : "\nAttributes\n") +
         rankingTable(model).Text(2);
}

std::string binningSummary(const AttributeModel& attribute) {
  std::string text = fmt::format("{}, {}", plural(attribute.bins.size(), "bin"),
                                 plural(attribute.distinctValues, "distinct value"));
  if (attribute.entropyBefore && attribute.entropyAfter) {
    text += fmt::format(", entropy {} before, {} after, gain {}",
                        fixedNumber(*attribute.entropyBefore, kEntropyDigits),
                        fixedNumber(*attribute.entropyAfter, kEntropyDigits),
                        fixedNumber(attribute.InformationGain(), kEntropyDigits));
  }
  return text;
}

std::string attributeSummary(const AttributeModel& attribute) {
  return visibleText(attribute.name) + ": " + binningSummary(attribute);
}

std::string attributeText(const Model& model, const AttributeModel& attribute) {
  std::string text = attributeSummary(attribute) + "\n";
  if (!attribute.status.reason.empty()) text += "  " + visibleText(attribute.status.reason) + "\n";
  return text + binTable(model, attribute).Text(2);
}

std::string modelText(const Model& model) {
  std::string text = overviewText(model);
  for (std::size_t index : rankByGain(model)) {
    text += "\n" + attributeText(model, model.attributes[index]);
  }
  return text;
}

}  // namespace mcbin
