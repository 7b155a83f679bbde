#include "toolkit/score/score_model.h"

#include <fmt/format.h>
#include <mcbinning/encoders.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/column_scan.h"
#include "toolkit/fit/target_classes.h"
#include "toolkit/model/bin_lookup.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::uint64_t kReportInterval = 4096;

IBINVariable::BINWRoundingOption roundingOption(const Model& model) {
  return model.weight && model.weight->rounding == WeightRounding::Round
             ? IBINVariable::RoundToClosestInt
             : IBINVariable::TruncateToSmallerInt;
}

class Scorer {
 public:
  Scorer(const Model& model, const ScoreRequest& request, CaseSource& cases)
      : model_(model), cases_(cases), weightEncoder_(roundingOption(model)) {
    if (request.target) {
      if (!model.target) throw DataError("the model has no target, so it knows no classes");
      target_ = ColumnOf(*request.target);
    }
    if (request.weight) weight_ = ColumnOf(*request.weight);
    const WeightedCounts none{0.0, std::vector<double>(Classes(), 0.0)};
    for (const AttributeModel& attribute : model.attributes) {
      columns_.push_back(ColumnOf(attribute.name));
      score_.attributes.emplace_back().rows.assign(attribute.bins.size() + 2, none);
    }
  }

  void Case() {
    ++score_.cases.read;
    const std::optional<double> weight = Weight();
    if (!weight) {
      ++score_.cases.droppedForWeight;
      return;
    }
    ++score_.cases.used;
    const std::optional<std::size_t> code = Class();
    if (code) ++withClass_;
    for (std::size_t a = 0; a < columns_.size(); ++a) {
      const std::size_t row = RowOf(a);
      if (target_ && !code) continue;
      WeightedCounts& counts = score_.attributes[a].rows[row];
      counts.weight += *weight;
      if (code) counts.classWeights[*code] += *weight;
    }
  }

  ModelScore Finish() {
    if (score_.cases.used == 0) throw DataError("no case can be used");
    if (target_ && withClass_ == 0) {
      throw DataError(fmt::format("no case has a category in the target {}",
                                  excerpt(cases_.ColumnNames()[*target_])));
    }
    for (std::size_t a = 0; a < columns_.size(); ++a) Complete(model_.attributes[a], a);
    return std::move(score_);
  }

  const CaseCounts& Cases() const { return score_.cases; }

 private:
  std::size_t Classes() const { return target_ ? model_.target->categories.size() : 0; }

  std::size_t ColumnOf(const std::string& name) const {
    const std::vector<std::string>& names = cases_.ColumnNames();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
      throw DataError(fmt::format("the data have no column {}", excerpt(name)));
    }
    const auto column = static_cast<std::size_t>(found - names.begin());
    if (const std::string why = cases_.WhyUnfit(column); !why.empty()) {
      throw DataError(fmt::format("column {}: {}", excerpt(name), why));
    }
    return column;
  }

  std::optional<double> Number(std::size_t column) {
    double value = 0.0;
    switch (cases_.ReadNumber(column, value)) {
      case CellKind::Number:
        return value;
      case CellKind::Missing:
        return std::nullopt;
      default:
        throw DataError(fmt::format("{}: column {} holds {}, which is no number that can be used",
                                    cases_.Where(), excerpt(cases_.ColumnNames()[column]),
                                    quotedExcerpt(cases_.ReadText(column))));
    }
  }

  /// Empty for a case to be dropped.
  std::optional<double> Weight() {
    if (!weight_) return 1.0;
    const std::optional<double> value = Number(*weight_);
    if (!value || (model_.weight && model_.weight->missing.Contains(*value))) return std::nullopt;
    const double weight = weightEncoder_.Encode(*value);
    return weight == MCMV::gMissingValue ? std::nullopt : std::optional(weight);
  }

  std::optional<std::size_t> Class() {
    if (!target_) return std::nullopt;
    const std::string_view category =
        categoryOf(cases_.ReadText(*target_), model_.options.naTexts, model_.target->missingTexts);
    if (category.empty()) return std::nullopt;
    const auto known = codes_.find(category);
    if (known != codes_.end()) return static_cast<std::size_t>(known->second);
    const std::vector<std::string>& classes = model_.target->categories;
    const auto found = std::find_if(classes.begin(), classes.end(), [&](const std::string& name) {
      return namesSameClass(name, category);
    });
    if (found == classes.end()) {
      throw DataError(fmt::format("{}: the target {} holds {}, which is no class of the model",
                                  cases_.Where(), excerpt(cases_.ColumnNames()[*target_]),
                                  quotedExcerpt(category)));
    }
    codes_.emplace(category, static_cast<int>(found - classes.begin()));
    return static_cast<std::size_t>(found - classes.begin());
  }

  std::size_t RowOf(std::size_t attribute) {
    const AttributeModel& model = model_.attributes[attribute];
    const Placement placement = place(model, model_.closedSide, Number(columns_[attribute]));
    if (placement.kind == Placement::Kind::Bin) return placement.bin;
    return model.bins.size() + (placement.kind == Placement::Kind::Missing ? 0 : 1);
  }

  void Complete(const AttributeModel& model, std::size_t attribute) {
    AttributeScore& score = score_.attributes[attribute];
    std::vector<WeightedCounts> expected = model.bins;
    expected.push_back(model.missingCases);
    expected.push_back(model.userMissingCases);
    std::vector<WeightedCounts> pairs;
    for (std::size_t row = 0; row < expected.size(); ++row) {
      const double both[] = {expected[row].weight, score.rows[row].weight};
      pairs.push_back({both[0] + both[1], {both[0], both[1]}});
    }
    // The same formula, with the two sets of cases in place of two classes.
    score.stabilityIndex = evidenceOf(pairs, 0).informationValue;
    if (!target_) return;
    AttributeModel counted;
    counted.cutPoints = model.cutPoints;
    counted.bins.assign(score.rows.begin(), score.rows.end() - 2);
    counted.entropyBefore = entropyOf(sumOverBins(counted.bins));
    counted.entropyAfter = EntropyWithin(counted.bins);
    score.informationGain = counted.InformationGain();
    score.evidence = evidenceOf(model_, score.rows);
  }

  static double EntropyWithin(const std::vector<WeightedCounts>& bins) {
    double total = 0.0;
    for (const WeightedCounts& bin : bins) total += bin.weight;
    double entropy = 0.0;
    for (const WeightedCounts& bin : bins) {
      if (bin.weight > 0.0) entropy += bin.weight / total * entropyOf(bin.classWeights);
    }
    return entropy;
  }

  const Model& model_;
  CaseSource& cases_;
  BINRoundEncoder weightEncoder_;
  std::optional<std::size_t> target_;
  std::optional<std::size_t> weight_;
  std::vector<std::size_t> columns_;
  ClassCodes codes_;             ///< Of the texts seen so far.
  std::uint64_t withClass_ = 0;  ///< Used cases with a class.
  ModelScore score_;
};

}  // namespace

ModelScore scoreModel(const Model& model, const ScoreRequest& request, CaseSource& cases,
                      Monitor& monitor) {
  Scorer scorer(model, request, cases);
  while (cases.NextCase()) {
    scorer.Case();
    const std::uint64_t read = scorer.Cases().read;
    if (read % kReportInterval == 0) {
      monitor.ThrowIfStopped();
      monitor.Update("scoring cases", cases.ShareRead(), static_cast<double>(read), "cases");
    }
  }
  monitor.ThrowIfStopped();
  monitor.Clear();
  return scorer.Finish();
}

}  // namespace mcbin
