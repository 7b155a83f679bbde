/// A plain model of the bookkeeping of variables, encoders, user-missing definitions and the list:
/// what was said to them, in plain lists, and what they have to answer.
#ifndef MCBINNING_TESTS_FUZZ_LIST_MODEL_H
#define MCBINNING_TESTS_FUZZ_LIST_MODEL_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fuzz {

constexpr int kScaleLevel = 1;
constexpr int kNumericLevel = 2;
constexpr int kStringLevel = 3;
constexpr int kWeightLevel = 4;
constexpr int kAttributeRole = 1;
constexpr int kTargetRole = 2;
constexpr int kWeightRole = 3;

struct DefinitionModel {
  bool isForeign = false;  // of a class of the host's own, which declares nothing missing
  bool isString = false;
  std::vector<double> numbers;
  std::vector<std::string> texts;
  std::vector<std::string> labels;
  std::optional<std::pair<double, double>> interval;

  bool Contains(double value) const;
  bool Contains(const std::string& value) const;
  bool IsEqualTo(const DefinitionModel& other) const;
};

struct VariableModel {
  enum class Kind { kCategorical, kScale, kWeight };

  Kind kind = Kind::kCategorical;
  std::string name;
  std::string label;
  int level = 0;
  int role = 0;
  int declared = 0;                // the stored number of categories
  std::vector<double> numbers;     // by code, of a numeric encoder
  std::vector<std::string> texts;  // by code, of a string encoder
  std::vector<std::string> valueLabels;
  std::optional<DefinitionModel> missing;
  int rounding = 0;
  bool isLent = false;  // the weight encoder knows the definition

  bool IsCategorical() const { return kind == Kind::kCategorical; }
  bool HasNumericEncoder() const { return IsCategorical() && level == kNumericLevel; }
  bool HasStringEncoder() const { return IsCategorical() && level != kNumericLevel; }
  int Codes() const { return static_cast<int>(numbers.size() + texts.size()); }

  double Encode(double value);
  double Encode(const std::string& value);
  double EncodeConst(double value) const;
  double EncodeConst(const std::string& value) const;
  void SetValueLabel(int code, const std::string& valueLabel);
  int UpdateDeclared();
  bool AddMissing(double value, const std::string& valueLabel);
  bool AddMissing(const std::string& value, const std::string& valueLabel);
  bool SetMissingInterval(double low, double high);
  bool CanMergeWith(const VariableModel& other) const;

 private:
  bool HasSameMissing(const VariableModel& other) const;
};

struct ListModel {
  std::vector<VariableModel> variables;
  int scale = 0;
  int categorical = 0;
  int target = -1;
  int weight = -1;

  int Size() const { return static_cast<int>(variables.size()); }
  VariableModel* At(int index);
  int Find(const std::string& name) const;
  bool IsFree(const std::string& name) const { return !name.empty() && Find(name) < 0; }

  /// The index of the new variable, -1 when it is refused.
  int AddCategorical(const VariableModel& variable);
  int AddScale(const VariableModel& variable);
  int AddWeight(const VariableModel& variable);

  bool SetRole(int index, int role);
  bool Remove(int index);
  int UpdateNumbersOfCategories();
  bool IsValid(std::vector<int>& single, std::vector<int>& empty);

  /// The index of the first difference, nothing when there is none.
  std::optional<int> FirstDifference(const ListModel& other) const;

 private:
  int Add(const VariableModel& variable);
};

}  // namespace fuzz

#endif
