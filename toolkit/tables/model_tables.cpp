#include "toolkit/tables/model_tables.h"

#include <fmt/format.h>

#include <utility>

#include "toolkit/model/bin_labels.h"
#include "toolkit/text/number_text.h"
#include "toolkit/text/text_table.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr int kEntropyDigits = 4;

std::string plural(std::uint64_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string numberOrDash(const std::optional<double>& value) {
  return value ? shortestNumber(*value) : "-";
}

std::string entropyOrDash(const std::optional<double>& value) {
  return value ? fixedNumber(*value, kEntropyDigits) : "-";
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
  return text + "\n";
}

}  // namespace

TextTable binTable(const Model& model, const AttributeModel& attribute) {
  std::vector<std::string> header = {"#", visibleText(attribute.name), "weight", "share"};
  if (model.target) {
    for (const std::string& category : model.target->categories) {
      header.push_back(visibleText(category));
      header.emplace_back("%");
    }
  }
  TextTable table(std::move(header));
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  const double total =
      attribute.totalWeight + attribute.missingCases.weight + attribute.userMissingCases.weight;
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    std::vector<std::string> cells = {std::to_string(bin),
                                      intervalText(attribute.cutPoints, model.closedSide, bin)};
    addCounts(model, attribute.bins[bin], total, cells);
    table.AddRow(std::move(cells));
  }
  for (const auto& [name, member] : kBesideBins) {
    const WeightedCounts& counts = attribute.*member;
    if (counts.weight == 0.0) continue;
    std::vector<std::string> cells = {"", name};
    addCounts(model, counts, total, cells);
    table.AddRow(std::move(cells));
  }
  return table;
}

TextTable rankingTable(const Model& model) {
  std::vector<std::string> header = {"#", "attribute", "bins", "distinct", "min", "max"};
  if (model.target) {
    header.insert(header.end(), {"entropy before", "after", "gain"});
  }
  header.emplace_back("remark");
  TextTable table(std::move(header));
  table.SetAlign(0, TextTable::Align::Right);
  table.SetAlign(1, TextTable::Align::Left);
  table.SetAlign(model.target ? 9 : 6, TextTable::Align::Left);
  std::size_t rank = 0;
  for (std::size_t index : rankByInformationGain(model)) {
    const AttributeModel& attribute = model.attributes[index];
    std::vector<std::string> cells = {std::to_string(++rank),
                                      visibleText(attribute.name),
                                      std::to_string(attribute.bins.size()),
                                      std::to_string(attribute.distinctValues),
                                      numberOrDash(attribute.minimum),
                                      numberOrDash(attribute.maximum)};
    if (model.target) {
      cells.push_back(entropyOrDash(attribute.entropyBefore));
      cells.push_back(entropyOrDash(attribute.entropyAfter));
      cells.push_back(
          attribute.entropyAfter ? fixedNumber(attribute.InformationGain(), kEntropyDigits) : "-");
    }
    cells.push_back(visibleText(attribute.status.reason));
    table.AddRow(std::move(cells));
  }
  return table;
}

std::string summaryText(const Model& model) {
  std::string text =
      fmt::format("{} binning of {}: {}, {} used", model.target ? "Supervised" : "Equal-frequency",
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
         (model.target ? "\nAttributes by information gain\n" : "\nAttributes\n") +
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
  for (std::size_t index : rankByInformationGain(model)) {
    text += "\n" + attributeText(model, model.attributes[index]);
  }
  return text;
}

}  // namespace mcbin
