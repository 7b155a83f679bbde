#include "export/table_export.h"

#include <vector>

#include "model/bin_lookup.h"
#include "text/csv_text.h"
#include "text/format.h"
#include "text/model_tables.h"

namespace mcbin {
namespace {

void addLine(std::string& text, const std::vector<std::string>& cells) {
  bool first = true;
  for (const std::string& cell : cells) {
    appendCsvCell(text, cell, ',', first);
    first = false;
  }
  text += '\n';
}

void addCounts(std::string& text, std::vector<std::string> cells, const WeightedCounts& counts) {
  cells.push_back(weightText(counts.weight));
  for (const double weight : counts.classWeights) cells.push_back(weightText(weight));
  addLine(text, cells);
}

void addAttribute(std::string& text, const AttributeModel& attribute, const char* closed) {
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    const BinBounds bounds = boundsOf(attribute.cutPoints, bin);
    addCounts(text,
              {attribute.name, std::to_string(bin), shortestNumber(bounds.lower),
               shortestNumber(bounds.upper), closed},
              attribute.bins[bin]);
  }
  addCounts(text, {attribute.name, "missing", "", "", ""}, attribute.missingCases);
  addCounts(text, {attribute.name, "user-missing", "", "", ""}, attribute.userMissingCases);
}

}  // namespace

std::string modelToCsv(const Model& model) {
  std::vector<std::string> header = {"attribute", "bin", "lower", "upper", "closed", "weight"};
  if (model.target) {
    for (const std::string& category : model.target->categories) {
      header.push_back("weight_" + category);
    }
  }
  std::string text;
  addLine(text, header);
  const char* const closed = model.closedSide == ClosedSide::Right ? "right" : "left";
  for (const AttributeModel& attribute : model.attributes) addAttribute(text, attribute, closed);
  return text;
}

std::string modelToMarkdown(const Model& model) {
  std::string text = summaryText(model) + "\n## Attributes" +
                     (model.target ? " by information gain" : "") + "\n\n" +
                     rankingTable(model).Markdown();
  for (const std::size_t index : rankByInformationGain(model)) {
    const AttributeModel& attribute = model.attributes[index];
    text += "\n### " + attribute.name + "\n\n" + attributeSummary(attribute) + "\n\n";
    if (!attribute.status.reason.empty()) text += attribute.status.reason + "\n\n";
    text += binTable(model, attribute).Markdown();
  }
  return text;
}

}  // namespace mcbin
