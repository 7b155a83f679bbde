#include <string>

#include "toolkit/report/html_table.h"
#include "toolkit/report/page_frame.h"
#include "toolkit/score/score_formats.h"
#include "toolkit/score/score_tables.h"

namespace mcbin {
namespace {

void addAttribute(Markup& html, const Model& model, const ModelScore& score, std::size_t attribute,
                  const std::string& id) {
  const std::string& name = model.attributes[attribute].name;
  html.Open("section", {{"id", id}}).LineEnd();
  html.Element("h2", name).LineEnd().Element("p", shiftText(score, attribute)).LineEnd();
  const std::string unseen = unseenText(model, score, attribute);
  if (!unseen.empty()) html.Element("p", unseen, {{"class", "note"}}).LineEnd();
  addTable(html, scoreTable(model, score, attribute), "Bins of " + name);
  html.Close().LineEnd();
}

}  // namespace

/// One page that needs no script and no other file: what was scored, the attributes ranked, and a
/// table for each.
std::string scorePage(const Model& model, const ModelScore& score) {
  Markup html;
  openPage(html, "Score of " + score.counted.source.data, "");
  addLines(html, scoreSummary(model, score));
  html.Element("h2", "Attributes by stability index").LineEnd();
  const std::vector<std::size_t> ranked = rankByStability(score);
  const auto idOf = [](std::size_t rank) { return "a" + std::to_string(rank); };
  addTable(html, scoreRanking(model, score), "Attributes",
           [&](Markup& cell, std::size_t row, std::size_t column) {
             if (column != 1) return false;
             cell.Element("a", model.attributes[ranked[row - 1]].name, {{"href", "#" + idOf(row)}});
             return true;
           });
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    addAttribute(html, model, score, ranked[i], idOf(i + 1));
  }
  return std::move(html).Take();
}

}  // namespace mcbin
