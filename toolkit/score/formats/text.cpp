#include "toolkit/score/score_formats.h"
#include "toolkit/score/score_tables.h"

namespace mcbin {

/// What was scored, the attributes ranked, then every attribute in order of rank.
std::string scoreText(const Model& model, const ModelScore& score) {
  std::string text = scoreSummary(model, score) + "\nAttributes by stability index\n" +
                     scoreRanking(model, score).Text(2);
  for (const std::size_t attribute : rankByStability(score)) {
    text += "\n" + shiftText(score, attribute) + "\n";
    const std::string unseen = unseenText(model, score, attribute);
    if (!unseen.empty()) text += "  " + unseen + "\n";
    text += scoreTable(model, score, attribute).Text(2);
  }
  return text;
}

}  // namespace mcbin
