#include "random/list_comparison.h"

#include <mcbinning/encoders.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>

#include "random/agreement.h"

namespace mcbinning_tests {

namespace {

using plain_model::Definition;
using plain_model::Kind;
using plain_model::Variable;
using plain_model::VariableList;

void compareInterval(const BINNumericUserMissing& definition, const Definition& model) {
  const BINNumericInterval* interval = definition.GetInterval();
  compare("interval known", interval != nullptr, model.interval.has_value());
  if (interval != nullptr) {
    compare("left end", interval->GetLeftEnd(), model.interval->first);
    compare("right end", interval->GetRightEnd(), model.interval->second);
  }
}

void compareCodes(BINCatNumEncoder& encoder, const Variable& model) {
  for (int code = 0; code < model.Codes(); ++code) {
    const double value = model.numbers[static_cast<std::size_t>(code)];
    compare("value of a code", encoder.Decode(code), value);
    compare("code of a value", encoder.EncodeConst(value), model.EncodeConst(value));
  }
  for (const int code : {-1, model.Codes()}) {
    compare("no such code", encoder.Decode(code), MCMV::gMissingValue);
  }
}

void compareCodes(BINStringEncoder& encoder, const Variable& model) {
  for (int code = 0; code < model.Codes(); ++code) {
    const std::string& value = model.texts[static_cast<std::size_t>(code)];
    compare("text of a code", encoder.Decode(code), value);
    compare("code of a text", encoder.EncodeConst(value), model.EncodeConst(value));
  }
  for (const int code : {-1, model.Codes()}) {
    compare("no such code", encoder.Decode(code), std::string());
  }
}

void compareEncoder(IBINEncoder& encoder, const Variable& model) {
  compare("number of codes", encoder.GetNumberOfCategories(), model.Codes());
  if (auto* weights = dynamic_cast<BINRoundEncoder*>(&encoder)) {
    check(model.kind == Kind::kWeight, "a weight encoder");
    compare("type of a weight encoder", encoder.GetEncoderType(), IBINEncoder::RoundEncoderType);
    compare("weights have no labels", encoder.GetValueLabels(), nullptr);
    std::vector<double> weightsToTry = {
        -1.0,     -0.0, 0.25,       0.5,   std::nextafter(0.5, 0.0), 1.5,          2.0,
        2.4,      2.5,  0x1p52 + 1, 1e300, MCMV::gMissingValue,      std::nan(""), HUGE_VAL,
        -HUGE_VAL};
    if (model.missing) {
      weightsToTry.insert(weightsToTry.end(), model.missing->numbers.begin(),
                          model.missing->numbers.end());
    }
    for (const double raw : weightsToTry) {
      compare("weight", weights->Encode(raw),
              model.EncodeWeight(raw).value_or(MCMV::gMissingValue));
    }
    return;
  }
  compare("value labels", *encoder.GetValueLabels(), model.valueLabels);
  if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(&encoder)) {
    check(model.HasNumericEncoder(), "a numeric encoder");
    compare("type of numbers", encoder.GetEncoderType(), IBINEncoder::CatNumEncoderType);
    compareCodes(*numbers, model);
  } else {
    check(model.HasStringEncoder(), "a string encoder");
    compare("type of texts", encoder.GetEncoderType(), IBINEncoder::StringEncoderType);
    compareCodes(dynamic_cast<BINStringEncoder&>(encoder), model);
  }
}

void compareRoles(const BINVarList& list, const VariableList& model) {
  std::vector<std::string> attributes;
  std::string target = "none";
  int targetCategories = 0;
  bool hasTarget = false;
  for (const Variable& variable : model.variables) {
    if (variable.role == plain_model::kAttributeRole) {
      attributes.push_back(variable.name);
    } else if (variable.role == plain_model::kTargetRole) {
      target = variable.name;
      targetCategories = hasTarget ? targetCategories : variable.declared;
      hasTarget = true;
    }
  }
  std::vector<std::string> listAttributes = {"left over"};
  std::string listTarget = "none";
  list.GetVarNames(listAttributes, listTarget);
  compare("names of the attributes", listAttributes, attributes);
  compare("name of the target", listTarget, target);
  compare("attributes", list.GetNumAttributeVars(), static_cast<int>(attributes.size()));
  compare("categories of the target", list.GetNTargetCats(), targetCategories);
}

}  // namespace

void compareDefinition(IBINUserMissing& definition, const Definition& model) {
  compare("data type", definition.GetDataType(),
          model.isString ? IBINUserMissing::StringData : IBINUserMissing::NumericData);
  compare("number of values", definition.GetNDiscreteValues(),
          static_cast<int>(model.numbers.size() + model.texts.size()));
  compare("has an interval", definition.HasInterval(), model.interval.has_value());
  if (model.isForeign) {
    return;
  }
  if (model.isString) {
    const auto& strings = dynamic_cast<BINStringUserMissing&>(definition);
    compare("missing texts", strings.GetDiscreteValues(), model.texts);
    compare("labels of texts", strings.GetValueLabels(), model.labels);
    return;
  }
  const auto& numeric = dynamic_cast<BINNumericUserMissing&>(definition);
  compare("missing numbers", numeric.GetDiscreteValues(), model.numbers);
  compare("labels of numbers", numeric.GetValueLabels(), model.labels);
  compareInterval(numeric, model);
}

void compareVariable(IBINVariable& variable, const Variable& model) {
  compare("name", variable.GetVariableName(), model.name);
  compare("label", variable.GetVariableLabel(), model.label);
  compare("level", variable.GetMeasureLevel(), model.level);
  compare("role", variable.GetVariableRole(), model.role);
  compare("declared categories", variable.GetNumberOfCategories(), model.declared);
  IBINUserMissing* missing = variable.GetUserMissingInfo();
  compare("definition known", missing != nullptr, model.missing.has_value());
  if (missing != nullptr) {
    compareDefinition(*missing, *model.missing);
  }
  IBINEncoder* encoder = variable.GetEncoder();
  compare("has an encoder", encoder != nullptr, model.kind != Kind::kScale);
  if (encoder != nullptr) {
    const bool knows = model.missing && (model.IsCategorical() || model.isLent);
    compare("encoder's definition", encoder->GetUserMissingInfo(), knows ? missing : nullptr);
    compareEncoder(*encoder, model);
  }
}

void compareList(BINVarList& list, const VariableList& model) {
  const BINVarList& asConst = list;
  compare("size", list.Size(), model.variables.size());
  compare("scale variables", list.GetNumContVar(), model.scale);
  compare("categorical variables", list.GetNumCatVar(), model.categorical);
  compare("target", list.GetTargetIndex(), model.target);
  compare("weight", list.GetWeightIndex(), model.weight);
  compare("target variable", list.GetTargetVariable(), list.GetVarAt(model.target));
  for (int i = -1; i <= model.Size(); ++i) {
    compare("one variable", list.GetVarAt(i), asConst.GetVarAt(i));
    compare("one encoder", list.GetEncoderAt(i), asConst.GetEncoderAt(i));
    const bool isNone = i < 0 || i == model.Size();
    compare("no variable for a bad index", list.GetVarAt(i) == nullptr, isNone);
    const Variable* variable = isNone ? nullptr : &model.At(i);
    compare("role by index", list.GetVariableRole(i), isNone ? 0 : variable->role);
    if (!isNone) {
      compareVariable(*list.GetVarAt(i), *variable);
      compare("found by name", list.FindVariable(variable->name), model.Find(variable->name));
    }
  }
  compareRoles(list, model);
}

}  // namespace mcbinning_tests
