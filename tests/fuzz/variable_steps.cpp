#include <mcbinning/encoders.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/list_comparison.h"
#include "fuzz/list_steps.h"
#include "support/counting_user_missing.h"

namespace fuzz {

namespace {

/// A definition with its model.
struct MadeDefinition {
  std::unique_ptr<IBINUserMissing> definition;
  std::optional<DefinitionModel> model;
};

MadeDefinition makeNumeric(Input& input) {
  auto definition = std::make_unique<BINNumericUserMissing>();
  DefinitionModel model;
  for (int i = input.Below(4); i > 0; --i) {
    model.numbers.push_back(input.Number());
    model.labels.push_back(input.Text());
    definition->AddValue(model.numbers.back(), model.labels.back());
  }
  if (input.Flag()) {
    const double low = input.Number();
    model.interval = {low, input.Number()};
    definition->SetInterval(BINNumericInterval(low, model.interval->second));
  }
  return {std::move(definition), model};
}

MadeDefinition makeString(Input& input) {
  auto definition = std::make_unique<BINStringUserMissing>();
  DefinitionModel model;
  model.isString = true;
  for (int i = input.Below(4); i > 0; --i) {
    model.texts.push_back(input.Text());
    model.labels.push_back(input.Text());
    definition->AddValue(model.texts.back(), model.labels.back());
  }
  return {std::move(definition), model};
}

MadeDefinition makeForeign(Input& input) {
  DefinitionModel model;
  model.isForeign = true;
  model.isString = input.Flag();
  return {std::make_unique<mcbinning_tests::ForeignUserMissing>(
              model.isString ? IBINUserMissing::StringData : IBINUserMissing::NumericData),
          model};
}

MadeDefinition makeDefinition(Input& input) {
  switch (input.Below(8)) {
    case 0:
      return {};  // null: no definition
    case 1:
      return makeForeign(input);
    case 2:
    case 3:
    case 4:
      return makeString(input);
    default:
      return makeNumeric(input);
  }
}

// `Owner` is the variable, or the encoder of a categorical one.
template <typename Owner>
void replaceDefinition(Input& input, Owner& owner, VariableModel& model) {
  if (input.OneIn(6)) {
    check(owner.SetUserMissingInfo(owner.GetUserMissingInfo()), "the held definition again");
    model.isLent = model.missing.has_value();
    return;
  }
  MadeDefinition made = makeDefinition(input);
  const bool isAccepted = !made.model || made.model->isString == model.HasStringEncoder();
  check(owner.SetUserMissingInfo(made.definition.get()) == isAccepted, "replace definition");
  if (isAccepted) {
    static_cast<void>(made.definition.release());
    model.missing = made.model;
    model.isLent = model.missing.has_value();
  }
}

void changeLabels(Input& input, IBINEncoder& encoder, VariableModel& model) {
  if (input.Flag()) {
    const std::vector<std::string> labels = input.Several(5, [&] { return input.Text(); });
    encoder.SetValueLabels(labels);
    model.valueLabels = labels;
  } else if (!model.valueLabels.empty() && input.OneIn(4)) {
    // A label that stands among the labels, which may move while it is set.
    const std::string first = model.valueLabels.front();
    const int code = model.Codes() - 1;
    encoder.SetValueLabel(code, encoder.GetValueLabels()->front());
    model.SetValueLabel(code, first);
    encoder.SetValueLabels(*encoder.GetValueLabels());
  } else {
    const int code = input.Index(static_cast<std::size_t>(model.Codes()));
    const std::string label = input.Text();
    encoder.SetValueLabel(code, label);
    model.SetValueLabel(code, label);
  }
}

void encode(Input& input, IBINEncoder& encoder, VariableModel& model) {
  const bool adds = input.Below(3) != 0;
  if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(&encoder)) {
    const double value = input.Number();
    check(isSame(adds ? numbers->Encode(value) : numbers->EncodeConst(value),
                 adds ? model.Encode(value) : model.EncodeConst(value)),
          "encode a number");
  } else {
    auto& texts = dynamic_cast<BINStringEncoder&>(encoder);
    const std::string value = input.Text();
    check(isSame(adds ? texts.Encode(value) : texts.EncodeConst(value),
                 adds ? model.Encode(value) : model.EncodeConst(value)),
          "encode a text");
  }
}

void stepOfCategoricalEncoder(Input& input, IBINEncoder& encoder, VariableModel& model) {
  switch (input.Below(6)) {
    case 0:
      return changeLabels(input, encoder, model);
    case 1:
      return replaceDefinition(input, encoder, model);
    case 2: {
      const std::unique_ptr<IBINEncoder> clone(encoder.Clone());
      check(displayed(*clone) == displayed(encoder), "clone of an encoder");
      check(clone->GetUserMissingInfo() == nullptr ||
                clone->GetUserMissingInfo() != encoder.GetUserMissingInfo(),
            "a clone has a definition of its own");
      return;
    }
    default:
      return encode(input, encoder, model);
  }
}

// A weight encoder only borrows definitions, so what is set must live in the variable.
void stepOfWeightEncoder(Input& input, BINRoundEncoder& encoder, IBINVariable& variable,
                         VariableModel& model) {
  switch (input.Below(4)) {
    case 0:
      check(encoder.SetUserMissingInfo(nullptr), "no definition for a weight encoder");
      model.isLent = false;
      return;
    case 1: {
      IBINUserMissing* held = variable.GetUserMissingInfo();
      check(encoder.SetUserMissingInfo(held), "lend the held definition");
      model.isLent = held != nullptr;
      return;
    }
    case 2: {
      model.rounding = input.OneIn(4) ? input.AnyInt() : input.Below(3);
      BINRoundEncoder other(static_cast<IBINVariable::BINWRoundingOption>(model.rounding));
      other.SetUserMissingInfo(encoder.GetUserMissingInfo());
      encoder = other;
      const BINRoundEncoder& self = encoder;
      encoder = self;
      return;
    }
    default: {
      encoder.SetValueLabels({"ignored"});
      encoder.SetValueLabel(input.AnyInt(), "ignored");
      BINStringUserMissing refused;
      check(!encoder.SetUserMissingInfo(&refused), "no texts for a weight encoder");
      const std::unique_ptr<IBINEncoder> clone(encoder.Clone());
      check(clone->GetUserMissingInfo() == encoder.GetUserMissingInfo(), "a clone borrows");
    }
  }
}

void stepOfEncoder(Input& input, IBINVariable& variable, VariableModel& model) {
  IBINEncoder* encoder = variable.GetEncoder();
  if (auto* weights = dynamic_cast<BINRoundEncoder*>(encoder)) {
    stepOfWeightEncoder(input, *weights, variable, model);
  } else if (encoder != nullptr) {
    stepOfCategoricalEncoder(input, *encoder, model);
  }
}

// Assigns a variable of either list to one of its class, which may be itself.
void assignVariable(Input& input, ListPair& pair, ListPair& other, int to) {
  ListPair& giving = input.Flag() && other.model.Size() > 0 ? other : pair;
  const int from = input.Below(giving.model.Size());
  const bool isSelf = &giving == &pair && from == to;
  VariableModel& target = *pair.model.At(to);
  const VariableModel source = *giving.model.At(from);
  if (target.kind != source.kind) {
    return;
  }
  const int rounding = target.rounding;
  const bool isLent = target.isLent;
  if (source.IsCategorical()) {
    dynamic_cast<BINCatVar&>(*pair.list.GetVarAt(to)) =
        dynamic_cast<BINCatVar&>(*giving.list.GetVarAt(from));
  } else if (source.kind == VariableModel::Kind::kScale) {
    dynamic_cast<BINContVar&>(*pair.list.GetVarAt(to)) =
        dynamic_cast<BINContVar&>(*giving.list.GetVarAt(from));
  } else {
    dynamic_cast<BINWeightVar&>(*pair.list.GetVarAt(to)) =
        dynamic_cast<BINWeightVar&>(*giving.list.GetVarAt(from));
  }
  target = source;
  target.rounding = rounding;  // the encoder stays
  target.isLent = isSelf ? isLent : target.missing.has_value();
}

void cloneVariable(IBINVariable& variable, const VariableModel& model) {
  const std::unique_ptr<IBINVariable> clone(variable.Clone());
  VariableModel modelOfClone = model;
  modelOfClone.isLent = model.missing.has_value();
  compareVariable(*clone, modelOfClone);
}

void askStatus(IBINVariable& variable, VariableModel& model) {
  const int declared = model.UpdateDeclared();
  const auto expected = !model.IsCategorical() || declared >= 2 ? IBINVariable::VarValid
                        : declared == 1                         ? IBINVariable::VarSingleCategory
                                                                : IBINVariable::VarNoCategories;
  check(variable.GetVarStatus() == expected, "status of a variable");
}

}  // namespace

void stepOfVariable(Input& input, ListPair& pair, ListPair& other) {
  if (pair.model.Size() == 0) {
    return;
  }
  const int index = input.Below(pair.model.Size());
  IBINVariable& variable = *pair.list.GetVarAt(index);
  VariableModel& model = *pair.model.At(index);
  switch (input.Below(10)) {
    case 0:
      model.label = input.Text();
      return variable.SetVariableLabel(model.label);
    case 1: {
      // Past the list, whose target index stays.
      const int role = input.AnyInt();
      variable.SetVariableRole(static_cast<IBINVariable::VariableRole>(role));
      model.role = model.kind == VariableModel::Kind::kWeight ? kWeightRole : role;
      return;
    }
    case 2:
      if (auto* categorical = dynamic_cast<BINCatVar*>(&variable)) {
        model.declared = input.AnyInt();
        categorical->SetNumberOfCategories(model.declared);
      }
      return;
    case 3:
      check(variable.UpdateNumberOfCategories() == model.UpdateDeclared(), "update categories");
      return;
    case 4:
      return askStatus(variable, model);
    case 5:
      return replaceDefinition(input, variable, model);
    case 6:
      return assignVariable(input, pair, other, index);
    case 7:
      return cloneVariable(variable, model);
    default:
      return stepOfEncoder(input, variable, model);
  }
}

void stepsOfEncoders(Input& input) {
  const std::vector<double> numbers = input.Several(12, [&] { return input.Number(); });
  const std::vector<std::string> texts = input.Several(12, [&] { return input.Text(); });
  BINCatNumEncoder ofNumbers(numbers);
  BINStringEncoder ofTexts(texts);
  BINCatNumEncoder oneByOne(input.AnyInt());
  BINStringEncoder textByText(input.AnyInt());
  VariableModel model;
  for (const double value : numbers) {
    check(isSame(oneByOne.Encode(value), model.Encode(value)), "encode one by one");
    check(isSame(ofNumbers.EncodeConst(value), model.EncodeConst(value)), "encode at once");
  }
  check(displayed(oneByOne) == displayed(ofNumbers), "both have the same numbers");
  model = VariableModel();
  for (const std::string& value : texts) {
    check(isSame(textByText.Encode(value), model.Encode(value)), "encode text by text");
    check(isSame(ofTexts.EncodeConst(value), model.EncodeConst(value)), "encode texts at once");
  }
  check(displayed(textByText) == displayed(ofTexts), "both have the same texts");
}

void stepsOfDefinitions(Input& input) {
  MadeDefinition first = makeDefinition(input);
  MadeDefinition second = makeDefinition(input);
  if (first.definition == nullptr) {
    return;
  }
  const std::unique_ptr<IBINUserMissing> clone(first.definition->Clone());
  compareDefinition(*clone, *first.model);
  check(displayed(*clone) == displayed(*first.definition), "clone of a definition");
  const bool isEqual = second.model && first.model->IsEqualTo(*second.model);
  check(first.definition->IsEqualTo(second.definition.get()) == isEqual, "equal definitions");
  if (auto* numeric = dynamic_cast<BINNumericUserMissing*>(first.definition.get())) {
    const double value = input.Number();
    check(numeric->Contains(value) == first.model->Contains(value), "contains a number");
    if (const auto* other = dynamic_cast<BINNumericUserMissing*>(second.definition.get())) {
      *numeric = input.Flag() ? *other : *numeric;
    }
    if (numeric->GetNDiscreteValues() > 0) {
      // What is added stands in the vectors that grow.
      numeric->AddValue(numeric->GetDiscreteValues().front(), numeric->GetValueLabels().front());
      check(isSame(numeric->GetDiscreteValues().front(), numeric->GetDiscreteValues().back()) &&
                numeric->GetValueLabels().front() == numeric->GetValueLabels().back(),
            "a value of its own added");
    }
  } else if (auto* strings = dynamic_cast<BINStringUserMissing*>(first.definition.get())) {
    const std::string value = input.Text();
    check(strings->Contains(value) == first.model->Contains(value), "contains a text");
    if (const auto* other = dynamic_cast<BINStringUserMissing*>(second.definition.get())) {
      *strings = input.Flag() ? *other : *strings;
    }
    if (strings->GetNDiscreteValues() > 0) {
      strings->AddValue(strings->GetDiscreteValues().front(), strings->GetValueLabels().front());
      check(strings->GetDiscreteValues().front() == strings->GetDiscreteValues().back() &&
                strings->GetValueLabels().front() == strings->GetValueLabels().back(),
            "a text of its own added");
    }
  }
}

}  // namespace fuzz
