#include "plain_model/random_list.h"

#include <mcbinning/encoders.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace plain_model {

namespace {

using MeasureLevel = IBINVariable::MeasureLevel;
using VariableRole = IBINVariable::VariableRole;

enum class Part { kTarget, kScaleAttribute, kCategoricalAttribute, kRoleless, kWeight };

class ListMaker {
 public:
  explicit ListMaker(Dice& dice) : dice_(dice) {}

  PlannedList Make() {
    made_.classes = 1 + dice_.Weighted({6, 42, 25, 12, 8, 7});
    for (const Part part : ChooseParts()) {
      Add(part);
    }
    ChangeRoles();
    RemoveSome();
    return made_;
  }

 private:
  std::vector<Part> ChooseParts() {
    std::vector<Part> parts;
    const int scale = dice_.Chance(0.01) ? 0 : dice_.Between(1, 4);
    parts.insert(parts.end(), static_cast<std::size_t>(scale), Part::kScaleAttribute);
    const int targets = dice_.Weighted({7, 86, 7});
    parts.insert(parts.end(), static_cast<std::size_t>(targets), Part::kTarget);
    const int categorical = dice_.Weighted({60, 30, 10});
    parts.insert(parts.end(), static_cast<std::size_t>(categorical), Part::kCategoricalAttribute);
    if (dice_.Chance(0.1)) {
      parts.push_back(Part::kRoleless);
    }
    if (dice_.Chance(0.55)) {
      parts.push_back(Part::kWeight);
    }
    for (std::size_t i = parts.size(); i > 1; --i) {
      std::swap(parts[i - 1], parts[static_cast<std::size_t>(dice_.Below(static_cast<int>(i)))]);
    }
    return parts;
  }

  void Add(Part part) {
    name_ = "v" + std::to_string(made_.plans.size());
    switch (part) {
      case Part::kTarget:
        AddCategorical(VariableRole::TargetRole);
        break;
      case Part::kScaleAttribute:
        AddScale(VariableRole::AttributeRole);
        break;
      case Part::kCategoricalAttribute:
        AddCategorical(VariableRole::AttributeRole);
        break;
      case Part::kRoleless: {
        const auto role =
            dice_.Pick({VariableRole::UndefinedRole, VariableRole::FrequencyWeightRole});
        if (dice_.Chance(0.5)) {
          AddScale(role);
        } else {
          AddCategorical(role);
        }
        break;
      }
      case Part::kWeight:
        AddWeight();
        break;
    }
  }

  void AddCategorical(VariableRole role) {
    CellPlan plan;
    plan.classes = dice_.Chance(0.8) ? made_.classes : dice_.Between(1, 6);
    plan.noise = dice_.Pick({0.0, 0.05, 0.2, 0.5, 1.0});
    plan.missing = dice_.Chance(0.25) ? 0.15 : 0.0;
    static constexpr CellStyle kStyles[] = {CellStyle::kCodes, CellStyle::kOddCodes,
                                            CellStyle::kRefusedCodes, CellStyle::kHighCodes};
    plan.style = kStyles[dice_.Weighted({84, 10, 4, 2})];
    const int declared = DeclaredCategories(plan);
    if (declared >= 2 && declared <= 8 && dice_.Chance(0.3)) {
      AddWithValues(declared, role);
    } else {
      AddWithCount(declared, role);
    }
    made_.plans.push_back(plan);
    if (dice_.Chance(0.1)) {
      // Cells hold codes already, so a definition on a categorical variable plays no part.
      const int index = made_.plain.Size() - 1;
      made_.host.AddDiscreteUserMissing(index, 1.0, "");
      made_.host.AddDiscreteUserMissing(index, std::string("1"), "");
    }
  }

  int DeclaredCategories(const CellPlan& plan) {
    if (dice_.Chance(0.005)) {
      return dice_.Pick({-1, 0, 1});
    }
    if (plan.style == CellStyle::kHighCodes || plan.style == CellStyle::kRefusedCodes) {
      return dice_.Pick({2, 255, 256, 300, std::numeric_limits<int>::max()});
    }
    if (plan.style == CellStyle::kOddCodes) {
      return dice_.Chance(0.9) ? 8 : plan.classes + 1;
    }
    return std::max(2, plan.classes + dice_.Weighted({0, 3, 80, 10, 0, 7}) - 2);
  }

  void AddWithCount(int declared, VariableRole role) {
    MeasureLevel level =
        dice_.Pick({MeasureLevel::NumericCategoricalLevel, MeasureLevel::StringCategoricalLevel});
    if (dice_.Chance(0.04)) {
      level = dice_.Pick({MeasureLevel::UnknownLevel, MeasureLevel::ContinuousLevel,
                          MeasureLevel::FrequencyWeightLevel});
    }
    const int known = dice_.Chance(0.1) ? dice_.Between(1, declared < 100 ? declared + 2 : 3) : 0;
    const int index = made_.host.AddCatVar(name_, "", std::max(declared, 0), level, role);
    static_cast<BINCatVar*>(made_.host.GetVarAt(index))->SetNumberOfCategories(declared);
    for (int code = 0; code < known; ++code) {
      IBINEncoder* encoder = made_.host.GetEncoderAt(index);
      if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(encoder)) {
        numbers->Encode(10.0 * code);
      } else {
        static_cast<BINStringEncoder*>(encoder)->Encode(std::to_string(code));
      }
    }
    made_.plain.AddCategorical(level, std::max(declared, known), role);
  }

  // Values may repeat: the declared number counts them all.
  void AddWithValues(int declared, VariableRole role) {
    const bool asText = dice_.Chance(0.5);
    std::vector<double> numbers;
    std::vector<std::string> texts;
    for (int i = 0; i < declared; ++i) {
      numbers.push_back(dice_.Chance(0.05) ? 0.0 : i);
      texts.push_back(std::to_string(i));
    }
    if (asText) {
      made_.host.AddCatVar(name_, "", texts, role);
    } else {
      made_.host.AddCatVar(name_, "", numbers, role);
    }
    made_.plain.AddCategorical(asText ? kStringLevel : kNumericLevel, declared, role);
  }

  void AddScale(VariableRole role) {
    CellPlan plan;
    plan.style =
        dice_.Pick({CellStyle::kFewIntegers, CellStyle::kFewIntegers, CellStyle::kContinuous,
                    CellStyle::kBands, CellStyle::kBands, CellStyle::kBands, CellStyle::kShifted,
                    CellStyle::kShifted, CellStyle::kGrid, CellStyle::kNeighbours,
                    CellStyle::kSpecials, CellStyle::kSpecials});
    if (dice_.Chance(0.04)) {
      plan.style = dice_.Pick({CellStyle::kConstant, CellStyle::kAllMissing});
    }
    plan.distinct = dice_.Pick({2, 3, 4, 6, 10, 20, 60});
    plan.noise = dice_.Pick({0.0, 0.02, 0.1, 0.3});
    plan.missing = dice_.Chance(0.25) ? 0.2 : 0.0;
    if (plan.style == CellStyle::kBands) {
      MakeBands(plan);
    }
    const int index = made_.host.AddContVar(name_, "", role);
    made_.plain.AddScale(role, DeclareMissing(index));
    made_.plans.push_back(plan);
  }

  void MakeBands(CellPlan& plan) {
    double from = dice_.Chance(0.5) ? 0.0 : dice_.Between(-5, 5);
    const int bands = dice_.Between(2, 8);
    for (int i = 0; i < bands; ++i) {
      const double width = dice_.Pick({0.0, 1.0, 2.0, 5.0});
      plan.bands.push_back({from, from + width, dice_.Below(made_.classes)});
      from += width + 1.0;
    }
  }

  void AddWeight() {
    CellPlan plan;
    plan.style =
        dice_.Pick({CellStyle::kCounts, CellStyle::kCounts, CellStyle::kQuarters,
                    CellStyle::kFractions, CellStyle::kFractions, CellStyle::kLargeWeights});
    if (dice_.Chance(0.05)) {
      plan.style = CellStyle::kExtremeWeights;
    }
    plan.missing = dice_.Chance(0.3) ? 0.1 : 0.0;
    const int rounding = dice_.Pick({0, 1, 2, -1, 0, 1, 99});
    const int index =
        made_.host.AddWeightVar(name_, "", static_cast<IBINVariable::BINWRoundingOption>(rounding));
    made_.plain.AddWeight(rounding, DeclareMissing(index));
    made_.plans.push_back(plan);
  }

  // User-missing values of a scale or weight variable, in one variable out of six.
  MissingValues DeclareMissing(int index) {
    MissingValues missing;
    if (!dice_.Chance(0.16)) {
      return missing;
    }
    for (int i = dice_.Below(3); i > 0; --i) {
      missing.values.push_back(
          dice_.Pick({0.0, -0.0, 1.0, 2.0, 3.0, 0.5, std::numeric_limits<double>::quiet_NaN(),
                      std::numeric_limits<double>::infinity()}));
      made_.host.AddDiscreteUserMissing(index, missing.values.back(), "missing");
    }
    if (dice_.Chance(0.5)) {
      const double low = dice_.Pick({-1.0, 0.0, 1.0, 2.5, std::numeric_limits<double>::lowest()});
      const double high = dice_.Pick({low, low + 1.0, low - 1.0, 0.0});
      missing.interval = {low, high};
      made_.host.SetMissingInterval(index, low, high);
    }
    return missing;
  }

  void SetRole(int index, VariableRole role) {
    made_.host.SetVariableRole(index, role);
    made_.plain.SetRole(index, role);
  }

  // Also makes targets of variables that cannot be added as one: of a scale variable or the weight.
  void ChangeRoles() {
    const int size = made_.plain.Size();
    if (size == 0) {
      return;
    }
    const int index = dice_.Below(size);
    if (made_.plain.target < 0 && dice_.Chance(0.5)) {
      SetRole(index, VariableRole::TargetRole);
    } else if (dice_.Chance(0.08)) {
      SetRole(index, dice_.Pick({VariableRole::UndefinedRole, VariableRole::AttributeRole,
                                 VariableRole::TargetRole, VariableRole::FrequencyWeightRole,
                                 static_cast<VariableRole>(7)}));
    }
  }

  // When the weight was made the target and is removed, the target index is left pointing at the
  // variable after it or at none.
  void RemoveSome() {
    const bool weightIsTarget = made_.plain.weight >= 0 && made_.plain.weight == made_.plain.target;
    if (weightIsTarget && dice_.Chance(0.3)) {
      Remove(made_.plain.weight);
    } else if (made_.plain.Size() > 1 && dice_.Chance(0.05)) {
      Remove(dice_.Below(made_.plain.Size()));
    }
  }

  void Remove(int index) {
    made_.host.RemoveVar(index);
    made_.plain.Remove(index);
    made_.plans.erase(made_.plans.begin() + index);
  }

  Dice& dice_;
  PlannedList made_;
  std::string name_;
};

}  // namespace

PlannedList makeRandomList(Dice& dice) { return ListMaker(dice).Make(); }

}  // namespace plain_model
