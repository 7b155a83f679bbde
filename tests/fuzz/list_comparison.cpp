#include "fuzz/list_comparison.h"

#include <mcbinning/encoders.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>

#include "fuzz/check.h"

namespace fuzz {

namespace {

void compareInterval(const BINNumericUserMissing& definition, const DefinitionModel& model) {
  const BINNumericInterval* interval = definition.GetInterval();
  check((interval != nullptr) == model.interval.has_value(), "interval known");
  if (interval != nullptr) {
    check(isSame(interval->GetLeftEnd(), model.interval->first), "left end");
    check(isSame(interval->GetRightEnd(), model.interval->second), "right end");
  }
}

double plainCount(const VariableModel& model, double raw) {
  const bool isMissing = model.isLent && model.missing && model.missing->Contains(raw);
  if (raw == MCMV::gMissingValue || !std::isfinite(raw) || isMissing) {
    return MCMV::gMissingValue;
  }
  const double count = model.rounding == 0   ? std::floor(raw)
                       : model.rounding == 1 ? std::floor(raw + 0.5)
                                             : raw;
  return count <= 0.0 ? MCMV::gMissingValue : count;
}

void compareCodes(BINCatNumEncoder& encoder, const VariableModel& model) {
  for (int code = 0; code < model.Codes(); ++code) {
    const double value = model.numbers[static_cast<std::size_t>(code)];
    check(isSame(encoder.Decode(code), value), "value of a code");
    check(isSame(encoder.EncodeConst(value), model.EncodeConst(value)), "code of a value");
  }
  for (const int code : {-1, model.Codes()}) {
    check(isSame(encoder.Decode(code), MCMV::gMissingValue), "no such code");
  }
}

void compareCodes(BINStringEncoder& encoder, const VariableModel& model) {
  for (int code = 0; code < model.Codes(); ++code) {
    const std::string& value = model.texts[static_cast<std::size_t>(code)];
    check(encoder.Decode(code) == value, "text of a code");
    check(isSame(encoder.EncodeConst(value), model.EncodeConst(value)), "code of a text");
  }
  for (const int code : {-1, model.Codes()}) {
    check(encoder.Decode(code).empty(), "no such code");
  }
}

void compareEncoder(IBINEncoder& encoder, const VariableModel& model) {
  check(encoder.GetNumberOfCategories() == model.Codes(), "number of codes");
  if (auto* weights = dynamic_cast<BINRoundEncoder*>(&encoder)) {
    check(model.kind == VariableModel::Kind::kWeight, "a weight encoder");
    check(encoder.GetEncoderType() == IBINEncoder::RoundEncoderType, "type of a weight encoder");
    check(encoder.GetValueLabels() == nullptr, "weights have no labels");
    for (const double raw : {-1.0, -0.0, 0.3, 0.5, 1.5, 2.0, 1e300}) {
      check(isSame(weights->Encode(raw), plainCount(model, raw)), "weight");
    }
    return;
  }
  check(*encoder.GetValueLabels() == model.valueLabels, "value labels");
  if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(&encoder)) {
    check(model.HasNumericEncoder(), "a numeric encoder");
    check(encoder.GetEncoderType() == IBINEncoder::CatNumEncoderType, "type of numbers");
    compareCodes(*numbers, model);
  } else {
    check(model.HasStringEncoder(), "a string encoder");
    check(encoder.GetEncoderType() == IBINEncoder::StringEncoderType, "type of texts");
    compareCodes(dynamic_cast<BINStringEncoder&>(encoder), model);
  }
}

void compareRoles(const BINVarList& list, const ListModel& model) {
  std::vector<std::string> attributes;
  std::string target = "none";
  int targetCategories = 0;
  bool hasTarget = false;
  for (const VariableModel& variable : model.variables) {
    if (variable.role == kAttributeRole) {
      attributes.push_back(variable.name);
    } else if (variable.role == kTargetRole) {
      target = variable.name;
      targetCategories = hasTarget ? targetCategories : variable.declared;
      hasTarget = true;
    }
  }
  std::vector<std::string> listAttributes = {"left over"};
  std::string listTarget = "none";
  list.GetVarNames(listAttributes, listTarget);
  check(listAttributes == attributes && listTarget == target, "names by role");
  check(list.GetNumAttributeVars() == static_cast<int>(attributes.size()), "attributes");
  check(list.GetNTargetCats() == targetCategories, "categories of the target");
}

}  // namespace

void compareDefinition(IBINUserMissing& definition, const DefinitionModel& model) {
  check(definition.GetDataType() ==
            (model.isString ? IBINUserMissing::StringData : IBINUserMissing::NumericData),
        "data type");
  check(definition.GetNDiscreteValues() ==
            static_cast<int>(model.numbers.size() + model.texts.size()),
        "number of values");
  check(definition.HasInterval() == model.interval.has_value(), "has an interval");
  if (model.isForeign) {
    return;
  }
  if (model.isString) {
    const auto& strings = dynamic_cast<BINStringUserMissing&>(definition);
    check(strings.GetDiscreteValues() == model.texts, "missing texts");
    check(strings.GetValueLabels() == model.labels, "labels of texts");
    return;
  }
  const auto& numeric = dynamic_cast<BINNumericUserMissing&>(definition);
  check(isSame(numeric.GetDiscreteValues(), model.numbers), "missing numbers");
  check(numeric.GetValueLabels() == model.labels, "labels of numbers");
  compareInterval(numeric, model);
}

void compareVariable(IBINVariable& variable, const VariableModel& model) {
  check(variable.GetVariableName() == model.name, "name");
  check(variable.GetVariableLabel() == model.label, "label");
  check(variable.GetMeasureLevel() == model.level, "level");
  check(variable.GetVariableRole() == model.role, "role");
  check(variable.GetNumberOfCategories() == model.declared, "declared categories");
  IBINUserMissing* missing = variable.GetUserMissingInfo();
  check((missing != nullptr) == model.missing.has_value(), "definition known");
  if (missing != nullptr) {
    compareDefinition(*missing, *model.missing);
  }
  IBINEncoder* encoder = variable.GetEncoder();
  check((encoder != nullptr) == (model.kind != VariableModel::Kind::kScale), "has an encoder");
  if (encoder != nullptr) {
    const bool knows = model.missing && (model.IsCategorical() || model.isLent);
    check(encoder->GetUserMissingInfo() == (knows ? missing : nullptr), "encoder's definition");
    compareEncoder(*encoder, model);
  }
}

void compareList(BINVarList& list, const ListModel& model) {
  const BINVarList& asConst = list;
  check(list.Size() == model.variables.size(), "size");
  check(list.GetNumContVar() == model.scale, "scale variables");
  check(list.GetNumCatVar() == model.categorical, "categorical variables");
  check(list.GetTargetIndex() == model.target, "target");
  check(list.GetWeightIndex() == model.weight, "weight");
  check(list.GetTargetVariable() == list.GetVarAt(model.target), "target variable");
  for (int i = -1; i <= model.Size(); ++i) {
    check(list.GetVarAt(i) == asConst.GetVarAt(i), "one variable");
    check(list.GetEncoderAt(i) == asConst.GetEncoderAt(i), "one encoder");
    const bool isNone = i < 0 || i == model.Size();
    check((list.GetVarAt(i) == nullptr) == isNone, "a variable for a good index");
    const VariableModel* variable =
        isNone ? nullptr : &model.variables[static_cast<std::size_t>(i)];
    check(list.GetVariableRole(i) == (isNone ? 0 : variable->role), "role by index");
    if (!isNone) {
      compareVariable(*list.GetVarAt(i), *variable);
      check(list.FindVariable(variable->name) == model.Find(variable->name), "found by name");
    }
  }
  compareRoles(list, model);
}

}  // namespace fuzz
