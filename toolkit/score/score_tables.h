/// The tables of a score, side by side with those of the fit.
#ifndef MCBIN_TOOLKIT_SCORE_SCORE_TABLES_H
#define MCBIN_TOOLKIT_SCORE_SCORE_TABLES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/model/bin_lookup.h"
#include "toolkit/score/score_model.h"
#include "toolkit/text/text_table.h"

namespace mcbin {

/// A bin, or the cases beside the bins, on the other data and in the fit.
struct ScoreRow {
  std::string bin;                  ///< "0", "1", ..., "missing", "user-missing".
  std::string name;                 ///< The interval; beside the bins as `bin`.
  std::optional<BinBounds> bounds;  ///< Of a bin.
  WeightedCounts counts;
  WeightedCounts inFit;
  std::optional<Evidence> evidence = {};  ///< Of a target with two categories.
  std::optional<Evidence> evidenceInFit = {};
  double stabilityIndex = 0.0;
};

/// The rows of an attribute, those without weight too.
std::vector<ScoreRow> scoreRows(const Model& model, const ModelScore& score, std::size_t attribute);

/// Positions of the attributes, the highest stability index first; equal ones in their order.
std::vector<std::size_t> rankByStability(const ModelScore& score);

/// What was scored and what had been fitted, as lines.
std::string scoreSummary(const Model& model, const ModelScore& score);

/// The attributes in order of rank.
TextTable scoreRanking(const Model& model, const ModelScore& score);

/// The name and the stability index of an attribute with its reading.
std::string shiftText(const ModelScore& score, std::size_t attribute);

/// What the fit never saw: values beyond its smallest and largest, and rows that were empty; empty
/// when there is nothing of that kind.
std::string unseenText(const Model& model, const ModelScore& score, std::size_t attribute);

/// The rows of an attribute that have weight here or had in the fit, and the total.
TextTable scoreTable(const Model& model, const ModelScore& score, std::size_t attribute);

}  // namespace mcbin

#endif
