#include "toolkit/score/score_formats.h"

#include <algorithm>

namespace mcbin {

// One file each in formats/, which says what it writes.
std::string scoreText(const Model& model, const ModelScore& score);
std::string scoreJson(const Model& model, const ModelScore& score);
std::string scoreCsv(const Model& model, const ModelScore& score);
std::string scorePage(const Model& model, const ModelScore& score);

namespace {

constexpr ScoreFormat kFormats[] = {
    {"text", "the tables, the least stable attribute first", scoreText},
    {"json", "everything, in the words of the model", scoreJson},
    {"csv", "a line per bin", scoreCsv},
    {"html", "the tables as one page for a browser", scorePage}};

}  // namespace

std::span<const ScoreFormat> scoreFormats() { return kFormats; }

const ScoreFormat& scoreFormat(const std::string& name) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats),
                       [&](const ScoreFormat& format) { return name == format.name; });
}

}  // namespace mcbin
