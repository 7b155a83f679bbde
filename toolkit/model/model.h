/// Everything that a fitted model holds. Plain data: `fit` fills it, the model file stores it, and
/// every other command works from it alone.
#ifndef MCBIN_TOOLKIT_MODEL_MODEL_H
#define MCBIN_TOOLKIT_MODEL_MODEL_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/text/choice.h"

namespace mcbin {

/// The version of the model file that this program writes, and the newest one that it reads.
inline constexpr int kModelSchemaVersion = 1;

/// The value of "format" in every model file.
inline constexpr const char* kModelFormat = "mcbin-model";

enum class Method { Supervised, EqualFrequency };
inline constexpr Choice<Method> kMethods[] = {{"supervised", Method::Supervised},
                                              {"equal-frequency", Method::EqualFrequency}};

/// The side of a bin that belongs to it: Right makes bins (a, b], Left makes bins [a, b).
enum class ClosedSide { Right, Left };
inline constexpr Choice<ClosedSide> kClosedSides[] = {{"right", ClosedSide::Right},
                                                      {"left", ClosedSide::Left}};

enum class WeightRounding { Truncate, Round };
inline constexpr Choice<WeightRounding> kWeightRoundings[] = {
    {"truncate", WeightRounding::Truncate}, {"round", WeightRounding::Round}};

/// The values of a column that its user declared missing. Both range ends belong to the range.
struct MissingRules {
  std::vector<double> values;
  std::optional<std::pair<double, double>> range;

  bool Contains(double value) const;
};

/// How much weight lies in a bin (or in the missing part) and how it splits over the target's
/// categories, in code order. `classWeights` is empty in an equal-frequency model.
struct WeightedCounts {
  double weight = 0.0;
  std::vector<double> classWeights;
};

/// An attribute that ends in error has no place in a model.
enum class Severity { Ok, Warning };
inline constexpr Choice<Severity> kSeverities[] = {{"ok", Severity::Ok},
                                                   {"warning", Severity::Warning}};

/// How the binning of one attribute ended.
struct AttributeStatus {
  long code = 0;
  Severity severity = Severity::Ok;
  std::string reason;  ///< A plain sentence part; empty when the attribute was cut without remark.
};

/// One attribute and its bins. There is always one more bin than there are cut points.
struct AttributeModel {
  std::string name;
  MissingRules missing;
  AttributeStatus status;
  std::uint32_t distinctValues = 0;
  std::optional<double> minimum;  ///< Of the valid cases; empty when there are none.
  std::optional<double> maximum;
  double totalWeight = 0.0;             ///< Of the cases with a value (and a target category).
  double totalWeightWithMissing = 0.0;  ///< Of all used cases.
  std::vector<double> cutPoints;        ///< Strictly ascending; may hold infinities, never NaN.
  std::vector<WeightedCounts> bins;     ///< In ascending order of value.
  bool cutsGiven = false;               ///< By the user, in place of a search.
  /// Cases with a target category whose value is missing, or declared missing by the user.
  WeightedCounts missingCases;
  WeightedCounts userMissingCases;
  /// Cases with a value and a target category that the library counts in no bin: part of
  /// `totalWeight`. `apply` finds each of them a bin. Without class weights when there are none.
  WeightedCounts unbinnedCases;
  /// Weight that bins count of cases that lie in another bin, where `apply` puts them.
  double miscountedWeight = 0.0;
  /// Base-2 entropy of the target over the valid cases, before and after cutting. Empty in an
  /// equal-frequency model and when nothing was searched.
  std::optional<double> entropyBefore;
  std::optional<double> entropyAfter;

  /// Entropy before less entropy after; 0 without cut points and when either is not there.
  double InformationGain() const;

  /// The same with each kind of cases beside the bins as a bin of its own, so that an attribute
  /// that is mostly missing gains little. 0 without a target, never negative.
  double GainOverAllCases() const;

  /// What shares of weight refer to: the bins, the missing and the user-missing cases.
  double WeightOfAll() const;
};

/// Numbers of the search as the model file names them. They are not negative, and null when nothing
/// was searched; one that is not `required` came into the format later.
struct SearchNumber {
  const char* name;
  std::optional<double> AttributeModel::*value;
  bool required;
};
inline constexpr SearchNumber kSearchNumbers[] = {
    {"entropyBefore", &AttributeModel::entropyBefore, true},
    {"entropyAfter", &AttributeModel::entropyAfter, true}};

/// Cases that tables and charts list behind the bins.
struct CasesBesideBins {
  const char* name;
  WeightedCounts AttributeModel::*counts;
};
inline constexpr CasesBesideBins kBesideBins[] = {
    {"missing", &AttributeModel::missingCases},
    {"user-missing", &AttributeModel::userMissingCases},
    {"in no bin", &AttributeModel::unbinnedCases}};

/// How the evidence of a target with two categories is taken.
struct EvidenceOptions {
  std::string event;        ///< One of the categories.
  double adjustment = 0.5;  ///< Added to both counts of a bin in which one of them does not occur.
};

struct TargetModel {
  std::string name;
  std::vector<std::string> categories;    ///< In code order: code c is element c.
  std::vector<std::string> missingTexts;  ///< Categories declared missing by the user.
  std::vector<double> classWeights;       ///< Of all used cases, in code order.
  double missingWeight = 0.0;             ///< Of the used cases without a category.
  /// Never there unless there are two categories; without it the last category is the event.
  std::optional<EvidenceOptions> evidence = {};
};

struct WeightModel {
  std::string name;
  MissingRules missing;
  WeightRounding rounding = WeightRounding::Truncate;
};

/// What supervised bins must keep to after the search; 0: no limit.
struct BinLimits {
  double minShare = 0.0;  ///< Of `AttributeModel::WeightOfAll`.
  double minWeight = 0.0;
  int maxBins = 0;

  bool Any() const { return minShare > 0.0 || minWeight > 0.0 || maxBins > 0; }
};

/// The options that the model was fitted with, as given or by default.
struct FitOptions {
  int bins = 0;
  int distinctValueThreshold = 0;    ///< 0: no pre-binning. Supervised only.
  double smallBinThreshold = 0.0;    ///< 0: no small-bin merging. Supervised only.
  std::vector<std::string> naTexts;  ///< Texts read as missing; an empty cell always is.
  std::vector<std::string> attributePatterns;
  std::vector<std::string> excludePatterns;
  std::map<std::string, std::string> types;  ///< Column name to "scale" or "category".
  BinLimits limits = {};
};

/// Where the cases came from, as the user named it.
struct SourceModel {
  std::string data;
  std::optional<std::string> table;
  std::optional<std::string> query;
};

struct CaseCounts {
  std::uint64_t read = 0;
  std::uint64_t used = 0;
  std::uint64_t droppedForWeight = 0;
};

/// A column that was not binned, and why.
struct LeftOutColumn {
  std::string name;
  std::string reason;
};

struct Model {
  std::string program;  ///< Name and version of the program that fitted the model.
  std::string library;  ///< The binning library's own version text.
  Method method = Method::Supervised;
  ClosedSide closedSide = ClosedSide::Right;
  SourceModel source;
  FitOptions options;
  CaseCounts cases;
  std::optional<TargetModel> target;  ///< Present exactly in a supervised model.
  std::optional<WeightModel> weight;
  std::vector<AttributeModel> attributes;  ///< In the order of the columns.
  std::vector<LeftOutColumn> leftOut;
};

/// The attribute of that name, or null.
const AttributeModel* findAttribute(const Model& model, const std::string& name);

/// Positions into `model.attributes` by gain over all cases, highest first; equal gains (and every
/// attribute of an equal-frequency model) keep the order of the columns.
std::vector<std::size_t> rankByGain(const Model& model);

/// Base-2 entropy of the class weights; 0 when they sum to 0.
double entropyOf(const std::vector<double>& classWeights);

/// The mean of the bins' entropies, weighted by their weights; 0 without weight.
double meanEntropy(const std::vector<WeightedCounts>& bins);

/// The class weights over all bins (element by element sum).
std::vector<double> sumOverBins(const std::vector<WeightedCounts>& bins);

}  // namespace mcbin

#endif
