/// A plain model of the bookkeeping of variables, encoders, user-missing definitions and the list:
/// what was said to them, in plain lists, and what they have to answer.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_LIST_H
#define MCBINNING_TESTS_PLAIN_MODEL_LIST_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace plain_model {

enum class Kind { kCategorical, kScale, kWeight };

constexpr int kUnknownLevel = 0;
constexpr int kScaleLevel = 1;
constexpr int kNumericLevel = 2;
constexpr int kStringLevel = 3;
constexpr int kWeightLevel = 4;

constexpr int kNoRole = 0;
constexpr int kAttributeRole = 1;
constexpr int kTargetRole = 2;
constexpr int kWeightRole = 3;

/// User-missing values.
struct Definition {
  bool isForeign = false;  // of a class of the host's own, which declares nothing missing
  bool isCounted = false;  // by who made it, and so are its clones
  bool isString = false;
  std::vector<double> numbers;
  std::vector<std::string> texts;
  std::vector<std::string> labels;
  std::optional<std::pair<double, double>> interval;

  bool Contains(double value) const;
  bool Contains(const std::string& value) const;
  bool IsEqualTo(const Definition& other) const;
};

struct Variable {
  Kind kind = Kind::kScale;
  std::string name;
  std::string label;
  int level = kScaleLevel;
  int role = kNoRole;
  int declared = 0;                // the stored number of categories
  std::vector<double> numbers;     // by code, of a numeric encoder
  std::vector<std::string> texts;  // by code, of a string encoder
  std::vector<std::string> valueLabels;
  std::optional<Definition> missing;
  int rounding = 0;     // 0 truncates, 1 rounds to closest, anything else leaves weights alone
  bool isLent = false;  // the weight encoder knows the definition

  bool IsCategorical() const { return kind == Kind::kCategorical; }
  bool HasNumericEncoder() const { return IsCategorical() && level == kNumericLevel; }
  bool HasStringEncoder() const { return IsCategorical() && level != kNumericLevel; }
  int Codes() const { return static_cast<int>(numbers.size() + texts.size()); }
  int Categories() const { return declared > Codes() ? declared : Codes(); }
  bool IsMissing(double value) const { return missing && missing->Contains(value); }

  double Encode(double value);
  double Encode(const std::string& value);
  double EncodeConst(double value) const;
  double EncodeConst(const std::string& value) const;

  /// The weight that a raw weight stands for; nothing when the case is to be passed over.
  std::optional<double> EncodeWeight(double raw) const;

  void SetValueLabel(int code, const std::string& valueLabel);
  int UpdateDeclared();
  bool AddMissing(double value, const std::string& valueLabel);
  bool AddMissing(const std::string& value, const std::string& valueLabel);
  bool SetMissingInterval(double low, double high);
  bool CanMergeWith(const Variable& other) const;

 private:
  bool HasSameMissing(const Variable& other) const;
};

/// The host's description of its data.
struct VariableList {
  std::vector<Variable> variables;
  int scale = 0;
  int categorical = 0;
  int target = -1;
  int weight = -1;

  int Size() const { return static_cast<int>(variables.size()); }
  bool Has(int index) const { return index >= 0 && index < Size(); }
  Variable& At(int index) { return variables[static_cast<std::size_t>(index)]; }
  const Variable& At(int index) const { return variables[static_cast<std::size_t>(index)]; }
  int Find(const std::string& name) const;

  /// The index of the new variable, -1 when it is refused.
  int AddCategorical(const Variable& variable);
  int AddScale(const Variable& variable);
  int AddWeight(const Variable& variable);

  bool SetRole(int index, int role);
  bool Remove(int index);
  int UpdateNumbersOfCategories();
  bool IsValid(std::vector<int>& single, std::vector<int>& empty);

  /// A copied weight lends its definition anew.
  VariableList Copy() const;

  /// The index of the first difference, nothing when there is none.
  std::optional<int> FirstDifference(const VariableList& other) const;

 private:
  bool IsFree(const std::string& name) const { return !name.empty() && Find(name) < 0; }
  int Add(const Variable& variable);
};

}  // namespace plain_model

#endif
