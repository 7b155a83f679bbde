#include "toolkit/score/score_model.h"

#include <fmt/format.h>
#include <mcbinning/encoders.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/fit/case_count.h"
#include "toolkit/fit/case_feed.h"
#include "toolkit/fit/column_scan.h"
#include "toolkit/fit/target_classes.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::uint64_t kReportInterval = 4096;
/// Where a row has cases on one side only. Added before the shares are taken, so that no row counts
/// against the index.
constexpr double kAddedToBoth = 0.5;

IBINVariable::BINWRoundingOption roundingOption(const Model& model) {
  return model.weight && model.weight->rounding == WeightRounding::Round
             ? IBINVariable::RoundToClosestInt
             : IBINVariable::TruncateToSmallerInt;
}

/// What the stability index compares.
std::vector<WeightedCounts> rowsOf(const AttributeModel& attribute) {
  std::vector<WeightedCounts> rows = attribute.bins;
  rows.push_back(attribute.missingCases);
  rows.push_back(attribute.userMissingCases);
  return rows;
}

class Scorer {
 public:
  Scorer(const Model& model, const ScoreRequest& request, CaseSource& cases)
      : model_(model), cases_(cases), weightEncoder_(roundingOption(model)) {
    score_.counted = model;
    score_.counted.source = request.source;
    score_.counted.cases = {};
    TakeTarget(request.target);
    TakeWeight(request.weight);
    const std::size_t classes = target_ ? model.target->categories.size() : 0;
    for (AttributeModel& attribute : score_.counted.attributes) {
      columns_.push_back(ColumnOf(attribute.name, ", which the model cuts"));
      attribute = withoutCases(attribute, classes);
    }
    score_.shifts.resize(columns_.size());
  }

  void Case() {
    CaseCounts& counts = score_.counted.cases;
    ++counts.read;
    const std::optional<double> weight = Weight();
    if (!weight) {
      ++counts.droppedForWeight;
      return;
    }
    ++counts.used;
    totalWeight_ += *weight;
    if (std::isinf(totalWeight_)) failWeightOverflow(cases_, *weight_);
    const std::optional<std::size_t> code = Class();
    if (target_) {
      TargetModel& target = *score_.counted.target;
      (code ? target.classWeights[*code] : target.missingWeight) += *weight;
      withClass_ += code ? 1 : 0;
    }
    for (std::size_t a = 0; a < columns_.size(); ++a) {
      const std::optional<double> value = Number(columns_[a]);
      if (!target_ || code) Count(a, value, code, *weight);
    }
  }

  ModelScore Finish() {
    if (score_.counted.cases.used == 0) throw DataError("no case can be used");
    if (target_ && withClass_ == 0) {
      throw DataError(fmt::format("no case has a category in the target {}",
                                  excerpt(cases_.ColumnNames()[*target_])));
    }
    for (std::size_t a = 0; a < columns_.size(); ++a) Complete(a);
    return std::move(score_);
  }

  std::uint64_t CasesRead() const { return score_.counted.cases.read; }

 private:
  void TakeTarget(const std::optional<std::string>& name) {
    std::optional<TargetModel>& target = score_.counted.target;
    if (!name) {
      target.reset();
      return;
    }
    if (!target) throw DataError("the model has no target, so it knows no classes");
    target_ = ColumnOf(*name, ", the target: name another with --target or say --no-target");
    target->name = *name;
    target->classWeights.assign(target->categories.size(), 0.0);
    target->missingWeight = 0.0;
  }

  void TakeWeight(const std::optional<std::string>& name) {
    std::optional<WeightModel>& weight = score_.counted.weight;
    if (!name) {
      weight.reset();
      return;
    }
    weight_ = ColumnOf(*name, ", the weights: name another with --weight or say --no-weight");
    if (weight_ == target_) {
      throw UsageError(
          fmt::format("column {} cannot be named by --weight and by --target", excerpt(*name)));
    }
    if (!weight) weight.emplace();
    weight->name = *name;
  }

  std::size_t ColumnOf(const std::string& name, const char* advice) const {
    const std::vector<std::string>& names = cases_.ColumnNames();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
      throw DataError(fmt::format("the data have no column {}{}", excerpt(name), advice));
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

  void Count(std::size_t position, std::optional<double> value, std::optional<std::size_t> code,
             double weight) {
    AttributeModel& counted = score_.counted.attributes[position];
    const Placement placement = countCase(counted, model_.closedSide, value, code, weight);
    if (placement.kind != Placement::Kind::Bin) return;
    const AttributeModel& fitted = model_.attributes[position];
    AttributeShift& shift = score_.shifts[position];
    if (fitted.minimum && *value < *fitted.minimum) shift.weightBelow += weight;
    if (fitted.maximum && *value > *fitted.maximum) shift.weightAbove += weight;
  }

  void Complete(std::size_t position) {
    AttributeModel& counted = score_.counted.attributes[position];
    const std::vector<WeightedCounts> expected = rowsOf(model_.attributes[position]);
    const std::vector<WeightedCounts> actual = rowsOf(counted);
    std::vector<WeightedCounts> pairs;
    for (std::size_t row = 0; row < expected.size(); ++row) {
      const double e = expected[row].weight;
      const double a = actual[row].weight;
      const double added = (e == 0.0) != (a == 0.0) ? kAddedToBoth : 0.0;
      pairs.push_back({0.0, {e + added, a + added}});
    }
    // The same formula, with the two sets of cases in place of two classes.
    const EvidenceTable stability = evidenceOf(pairs, 0);
    AttributeShift& shift = score_.shifts[position];
    shift.stabilityIndex = stability.informationValue;
    for (const Evidence& row : stability.rows) shift.rowIndices.push_back(row.informationValue);
    if (!target_) return;
    counted.entropyBefore = entropyOf(sumOverBins(counted.bins));
    counted.entropyAfter = meanEntropy(counted.bins);
  }

  const Model& model_;
  CaseSource& cases_;
  BINRoundEncoder weightEncoder_;
  std::optional<std::size_t> target_;
  std::optional<std::size_t> weight_;
  std::vector<std::size_t> columns_;
  ClassCodes codes_;             ///< Of the texts seen so far.
  std::uint64_t withClass_ = 0;  ///< Used cases with a class.
  double totalWeight_ = 0.0;     ///< Of the used cases.
  ModelScore score_;
};

}  // namespace

Stability stabilityOf(double stabilityIndex) {
  if (stabilityIndex < 0.1) return Stability::Stable;
  return stabilityIndex <= 0.25 ? Stability::SomeShift : Stability::LargeShift;
}

ModelScore scoreModel(const Model& model, const ScoreRequest& request, CaseSource& cases,
                      Monitor& monitor) {
  Scorer scorer(model, request, cases);
  while (cases.NextCase()) {
    scorer.Case();
    const std::uint64_t read = scorer.CasesRead();
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
