#include <vector>

#include "toolkit/export/export_formats.h"
#include "toolkit/model/bin_lookup.h"
#include "toolkit/text/csv_text.h"
#include "toolkit/text/number_text.h"

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
  if (attribute.unbinnedCases.weight > 0.0) {
    addCounts(text, {attribute.name, "in no bin", "", "", ""}, attribute.unbinnedCases);
  }
}

}  // namespace

/// One line per bin of every attribute, one for its missing, one for its user-missing cases, and
/// one for those in no bin when there are any: attribute, bin (a number from 0, "missing",
/// "user-missing" or "in no bin"), lower, upper, closed ("right" or
/// "left"), weight, and weight_CATEGORY for every category of the target.
std::string csvExport(const Model& model, const ExportOptions& /*options*/) {
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

}  // namespace mcbin
