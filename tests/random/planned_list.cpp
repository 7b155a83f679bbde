#include "random/planned_list.h"

#include <algorithm>
#include <limits>
#include <string>

namespace mcbinning_tests {

namespace {

using plain_model::Kind;
using plain_model::Variable;

enum class Part { kTarget, kScale, kCategorical, kOther, kWeight };

class ListMaker {
 public:
  explicit ListMaker(Choices& choices) : choices_(choices) {}

  PlannedList MakeAny() {
    made_.classes = 1 + choices_.Weighted({6, 42, 25, 12, 8, 7});
    for (const Part part : ChooseParts()) {
      Add(part);
    }
    ChangeRoles();
    RemoveSome();
    return made_;
  }

  PlannedList MakeOrdinary() {
    made_.classes = choices_.Between(2, 5);
    for (int attributes = choices_.Between(1, 3); attributes > 0; --attributes) {
      const CellStyle style =
          choices_.Pick({CellStyle::kFewIntegers, CellStyle::kContinuous, CellStyle::kGrid,
                         CellStyle::kNeighbours, CellStyle::kShifted, CellStyle::kBands});
      const Variable variable = NewVariable(plain_model::kAttributeRole);
      const int index = Keep(made_.list.AddScale(variable), ScalePlan(style));
      made_.list.AddMissing(index, 7.0, "");
      made_.list.SetMissingInterval(index, 20.0, 22.5);
    }
    CellPlan plan;
    plan.style = CellStyle::kCodes;
    plan.classes = made_.classes;
    plan.missing = 0.05;
    Variable target = NewVariable(plain_model::kTargetRole);
    target.level = plain_model::kNumericLevel;
    target.declared = made_.classes;
    Keep(made_.list.AddDeclared(target), plan);
    if (choices_.Chance(0.8)) {
      AddOrdinaryWeight();
    }
    return made_;
  }

 private:
  std::vector<Part> ChooseParts() {
    std::vector<Part> parts;
    const auto add = [&parts](Part part, int times) {
      parts.insert(parts.end(), static_cast<std::size_t>(times), part);
    };
    add(Part::kScale, choices_.Chance(0.01) ? 0 : choices_.Between(1, 4));
    add(Part::kTarget, choices_.Weighted({7, 86, 7}));
    add(Part::kCategorical, choices_.Weighted({60, 30, 10}));
    add(Part::kOther, choices_.Weighted({85, 10, 5}));
    add(Part::kWeight, choices_.Weighted({45, 54, 1}));
    choices_.Shuffle(parts);
    return parts;
  }

  void Add(Part part) {
    switch (part) {
      case Part::kTarget:
        return AddCategorical(plain_model::kTargetRole);
      case Part::kScale:
        return AddScale(plain_model::kAttributeRole);
      case Part::kCategorical:
        return AddCategorical(plain_model::kAttributeRole);
      case Part::kOther: {
        const int role = AnyRole();
        return choices_.Flag() ? AddScale(role) : AddCategorical(role);
      }
      case Part::kWeight:
        return AddWeight();
    }
  }

  int AnyRole() {
    return choices_.Pick({plain_model::kNoRole, plain_model::kWeightRole, plain_model::kTargetRole,
                          plain_model::kAttributeRole, plain_model::kTargetRole, 7, -9});
  }

  Variable NewVariable(int role) {
    Variable variable;
    variable.name = "v" + std::to_string(made_.plans.size());
    variable.role = role;
    return variable;
  }

  // A variable that the list refuses has no cells.
  int Keep(int index, const CellPlan& plan) {
    if (index >= 0) {
      made_.plans.push_back(plan);
    }
    return index;
  }

  void AddCategorical(int role) {
    CellPlan plan;
    plan.classes = choices_.Chance(0.8) ? made_.classes : choices_.Between(1, 6);
    plan.noise = choices_.Pick({0.0, 0.05, 0.2, 0.5, 1.0});
    plan.missing = choices_.Chance(0.25) ? 0.15 : 0.0;
    static constexpr CellStyle kStyles[] = {CellStyle::kCodes, CellStyle::kOddCodes,
                                            CellStyle::kRefusedCodes, CellStyle::kHighCodes,
                                            CellStyle::kAnyCodes};
    plan.style = kStyles[choices_.Weighted({84, 10, 4, 2, 1})];
    Variable variable = NewVariable(role);
    variable.declared = DeclaredCategories(plan);
    const bool withValues =
        variable.declared >= 2 && variable.declared <= 8 && choices_.Chance(0.3);
    const int index = Keep(withValues ? AddValues(variable) : AddDeclared(variable), plan);
    if (choices_.Chance(0.1)) {
      // Cells hold codes already, so a definition on a categorical variable plays no part.
      made_.list.AddMissing(index, 1.0, "");
      made_.list.AddMissing(index, "1", "");
    }
  }

  int DeclaredCategories(const CellPlan& plan) {
    if (choices_.Chance(0.005)) {
      return choices_.Pick({-1, 0, 1, choices_.AnyInt()});
    }
    if (plan.style == CellStyle::kHighCodes || plan.style == CellStyle::kRefusedCodes) {
      return choices_.Pick({2, 255, 256, 300, std::numeric_limits<int>::max()});
    }
    if (plan.style == CellStyle::kOddCodes) {
      return choices_.Chance(0.9) ? 8 : plan.classes + 1;
    }
    return std::max(2, plan.classes + choices_.Weighted({0, 3, 80, 10, 0, 7}) - 2);
  }

  int AddDeclared(Variable variable) {
    variable.level = choices_.Pick({plain_model::kNumericLevel, plain_model::kStringLevel});
    if (choices_.Chance(0.04)) {
      variable.level = choices_.Between(-1, 5);
    }
    const int known =
        choices_.Chance(0.1) ? choices_.Between(1, std::clamp(variable.declared, -1, 6) + 2) : 0;
    const int index = made_.list.AddDeclared(variable);
    for (int code = 0; code < known; ++code) {
      if (variable.level == plain_model::kNumericLevel) {
        made_.list.Encode(index, 10.0 * code);
      } else {
        made_.list.Encode(index, std::to_string(code));
      }
    }
    return index;
  }

  // Values may repeat: the declared number counts them all.
  int AddValues(const Variable& variable) {
    std::vector<double> numbers;
    std::vector<std::string> texts;
    for (int i = 0; i < variable.declared; ++i) {
      numbers.push_back(choices_.Chance(0.05) ? 0.0 : i);
      texts.push_back(std::to_string(i));
    }
    return choices_.Flag() ? made_.list.AddTexts(variable, texts, false)
                           : made_.list.AddNumbers(variable, numbers, false);
  }

  void AddScale(int role) {
    CellStyle style =
        choices_.Pick({CellStyle::kFewIntegers, CellStyle::kFewIntegers, CellStyle::kContinuous,
                       CellStyle::kBands, CellStyle::kBands, CellStyle::kBands, CellStyle::kShifted,
                       CellStyle::kShifted, CellStyle::kGrid, CellStyle::kNeighbours,
                       CellStyle::kSpecials, CellStyle::kSpecials, CellStyle::kNumbers});
    if (choices_.Chance(0.04)) {
      style = choices_.Pick({CellStyle::kConstant, CellStyle::kAllMissing});
    }
    DeclareMissing(Keep(made_.list.AddScale(NewVariable(role)), ScalePlan(style)));
  }

  CellPlan ScalePlan(CellStyle style) {
    CellPlan plan;
    plan.style = style;
    plan.distinct = choices_.Pick({2, 3, 4, 6, 10, 20, 60, 200});
    plan.noise = choices_.Pick({0.0, 0.02, 0.1, 0.3});
    plan.missing = choices_.Chance(0.25) ? 0.2 : 0.0;
    double from = choices_.Flag() ? 0.0 : choices_.Between(-5, 5);
    for (int bands = choices_.Between(2, 8); bands > 0; --bands) {
      const double width = choices_.Pick({0.0, 1.0, 2.0, 5.0});
      plan.bands.push_back({from, from + width, choices_.Below(made_.classes)});
      from += width + 1.0;
    }
    return plan;
  }

  void AddWeight() {
    CellPlan plan;
    plan.style =
        choices_.Pick({CellStyle::kCounts, CellStyle::kCounts, CellStyle::kQuarters,
                       CellStyle::kFractions, CellStyle::kFractions, CellStyle::kLargeWeights});
    if (choices_.Chance(0.05)) {
      plan.style = choices_.Pick({CellStyle::kExtremeWeights, CellStyle::kAnyWeights});
    }
    plan.missing = choices_.Chance(0.3) ? 0.1 : 0.0;
    Variable variable = NewVariable(plain_model::kWeightRole);
    variable.rounding = choices_.Pick({0, 1, 2, -1, 0, 1, 99});
    DeclareMissing(Keep(made_.list.AddWeight(variable), plan));
  }

  void AddOrdinaryWeight() {
    CellPlan plan;
    plan.style = choices_.Pick({CellStyle::kCounts, CellStyle::kQuarters, CellStyle::kFractions});
    Variable variable = NewVariable(plain_model::kWeightRole);
    variable.rounding = choices_.Pick({0, 1, 2, 2});
    plan.missing = variable.rounding == 2 ? 0.0 : 0.1;
    Keep(made_.list.AddWeight(variable), plan);
  }

  // User-missing values of a scale or weight variable, in one variable out of six.
  void DeclareMissing(int index) {
    if (!choices_.Chance(0.16)) {
      return;
    }
    for (int i = choices_.Below(3); i > 0; --i) {
      made_.list.AddMissing(index, choices_.Number(), "missing");
    }
    if (choices_.Flag()) {
      const double low = choices_.Pick(
          {-1.0, 0.0, 1.0, 2.5, std::numeric_limits<double>::lowest(), choices_.Number()});
      made_.list.SetMissingInterval(index, low, choices_.Pick({low, low + 1.0, low - 1.0, 0.0}));
    }
  }

  // Also makes targets of variables that cannot be added as one: of a scale variable or the weight.
  void ChangeRoles() {
    const int size = made_.list.plain.Size();
    for (int i = choices_.Weighted({88, 8, 4}); i > 0 && size > 0; --i) {
      const int index =
          choices_.Below(size);  // compilers order the arguments of a call differently
      made_.list.SetRole(index, AnyRole());
    }
    if (made_.list.plain.target < 0 && size > 0 && choices_.Flag()) {
      made_.list.SetRole(choices_.Below(size), plain_model::kTargetRole);
    }
  }

  // When the weight was made the target and is removed, the target index is left pointing at the
  // variable after it or at none.
  void RemoveSome() {
    const plain_model::VariableList& plain = made_.list.plain;
    const bool weightIsTarget = plain.weight >= 0 && plain.weight == plain.target;
    if (weightIsTarget && choices_.Chance(0.3)) {
      Remove(plain.weight);
    } else if (plain.Size() > 0 && choices_.Chance(0.05)) {
      Remove(choices_.Below(plain.Size()));
    }
  }

  void Remove(int index) {
    made_.list.Remove(index);
    made_.plans.erase(made_.plans.begin() + index);
  }

  Choices& choices_;
  PlannedList made_;
};

}  // namespace

PlannedList makeAnyList(Choices& choices) { return ListMaker(choices).MakeAny(); }
PlannedList makeOrdinaryList(Choices& choices) { return ListMaker(choices).MakeOrdinary(); }

}  // namespace mcbinning_tests
