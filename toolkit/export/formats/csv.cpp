#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/export/export_formats.h"
#include "toolkit/model/bin_lookup.h"
#include "toolkit/model/evidence.h"
#include "toolkit/text/csv_text.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

std::vector<std::string> countCells(const WeightedCounts& counts) {
  std::vector<std::string> cells = {weightText(counts.weight)};
  for (const double weight : counts.classWeights) cells.push_back(weightText(weight));
  return cells;
}

/// The lines of one attribute, each with its evidence when there is one.
class AttributeLines {
 public:
  AttributeLines(const Model& model, const AttributeModel& attribute, std::string& text)
      : attribute_(attribute), evidence_(evidenceOf(model, attribute)), text_(text) {}

  void Add(std::vector<std::string> cells, const WeightedCounts& counts) {
    cells.insert(cells.begin(), attribute_.name);
    for (std::string& cell : countCells(counts)) cells.push_back(std::move(cell));
    if (evidence_) {
      const Evidence& row = evidence_->rows[row_++];
      for (const double value : {row.eventRate, row.weightOfEvidence, row.informationValue}) {
        cells.push_back(shortestNumber(value));
      }
    }
    appendCsvLine(text_, cells);
  }

 private:
  const AttributeModel& attribute_;
  std::optional<EvidenceTable> evidence_;
  std::string& text_;
  std::size_t row_ = 0;
};

void addAttribute(const Model& model, const AttributeModel& attribute, std::string& text) {
  const char* const closed = nameOf(kClosedSides, model.closedSide);
  AttributeLines lines(model, attribute, text);
  for (std::size_t bin = 0; bin < attribute.bins.size(); ++bin) {
    const BinBounds bounds = boundsOf(attribute.cutPoints, bin);
    lines.Add(
        {std::to_string(bin), shortestNumber(bounds.lower), shortestNumber(bounds.upper), closed},
        attribute.bins[bin]);
  }
  for (const auto& [name, member] : kBesideBins) {
    const bool isUnbinned = member == &AttributeModel::unbinnedCases;
    if (isUnbinned && attribute.unbinnedCases.weight == 0.0) continue;
    lines.Add({name, "", "", ""}, attribute.*member);
  }
}

}  // namespace

/// One line per bin of every attribute, one for its missing, one for its user-missing cases, and
/// one for those in no bin when there are any: attribute, bin (a number from 0, "missing",
/// "user-missing" or "in no bin"), lower, upper, closed ("right" or
/// "left"), weight, weight_CATEGORY for every category of the target and, where it has two, the
/// evidence: event_rate, weight_of_evidence, information_value, whose sum is that of the attribute.
std::string csvExport(const Model& model, const ExportOptions& /*options*/) {
  std::vector<std::string> header = {"attribute", "bin", "lower", "upper", "closed", "weight"};
  if (model.target) {
    for (const std::string& category : model.target->categories) {
      header.push_back("weight_" + category);
    }
  }
  if (eventOf(model)) {
    header.insert(header.end(), {"event_rate", "weight_of_evidence", "information_value"});
  }
  std::string text;
  appendCsvLine(text, header);
  for (const AttributeModel& attribute : model.attributes) addAttribute(model, attribute, text);
  return text;
}

}  // namespace mcbin
