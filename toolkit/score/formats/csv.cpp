#include <string>
#include <vector>

#include "toolkit/score/score_formats.h"
#include "toolkit/score/score_tables.h"
#include "toolkit/text/csv_text.h"
#include "toolkit/text/number_text.h"

namespace mcbin {
namespace {

/// A column, and the same of the fit behind it.
void addPair(std::vector<std::string>& header, const std::string& name) {
  header.push_back(name);
  header.push_back(name + "_in_fit");
}

std::vector<std::string> headerOf(const Model& counted) {
  std::vector<std::string> header = {"attribute", "bin", "lower", "upper", "closed"};
  addPair(header, "weight");
  if (counted.target) {
    for (const std::string& category : counted.target->categories) {
      addPair(header, "weight_" + category);
    }
  }
  if (eventOf(counted)) {
    for (const char* name : {"event_rate", "weight_of_evidence", "information_value"}) {
      addPair(header, name);
    }
  }
  header.emplace_back("stability_index");
  return header;
}

std::vector<std::string> cellsOf(const ScoreRow& row, const char* closed) {
  std::vector<std::string> cells = {row.bin, "", "", ""};
  if (row.bounds) {
    cells = {row.bin, shortestNumber(row.bounds->lower), shortestNumber(row.bounds->upper), closed};
  }
  cells.push_back(weightText(row.counts.weight));
  cells.push_back(weightText(row.inFit.weight));
  for (std::size_t c = 0; c < row.counts.classWeights.size(); ++c) {
    cells.push_back(weightText(row.counts.classWeights[c]));
    cells.push_back(weightText(row.inFit.classWeights[c]));
  }
  if (row.evidence && row.evidenceInFit) {
    for (const auto member :
         {&Evidence::eventRate, &Evidence::weightOfEvidence, &Evidence::informationValue}) {
      cells.push_back(shortestNumber((*row.evidence).*member));
      cells.push_back(shortestNumber((*row.evidenceInFit).*member));
    }
  }
  cells.push_back(shortestNumber(row.stabilityIndex));
  return cells;
}

}  // namespace

/// A line per bin of every attribute, in the order of the model, and one each for its missing and
/// its user-missing cases. The columns are those of the exported model, each with that of the fit
/// behind it, and the row's part of the stability index.
std::string scoreCsv(const Model& model, const ModelScore& score) {
  const char* const closed = nameOf(kClosedSides, model.closedSide);
  std::string text;
  appendCsvLine(text, headerOf(score.counted));
  for (std::size_t a = 0; a < model.attributes.size(); ++a) {
    for (const ScoreRow& row : scoreRows(model, score, a)) {
      std::vector<std::string> cells = cellsOf(row, closed);
      cells.insert(cells.begin(), model.attributes[a].name);
      appendCsvLine(text, cells);
    }
  }
  return text;
}

}  // namespace mcbin
