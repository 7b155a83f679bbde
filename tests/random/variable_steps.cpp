#include <mcbinning/encoders.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "random/agreement.h"
#include "random/list_comparison.h"
#include "random/steps.h"
#include "support/counting_user_missing.h"
#include "support/display.h"

namespace mcbinning_tests {

namespace {

using plain_model::Definition;
using plain_model::Kind;
using plain_model::Variable;

UserMissingCount madeDefinitions;

/// A definition with its model.
struct MadeDefinition {
  std::unique_ptr<IBINUserMissing> definition;
  std::optional<Definition> model;
};

MadeDefinition makeNumeric(Choices& choices) {
  auto definition = std::make_unique<CountingNumericUserMissing>(madeDefinitions);
  Definition model;
  model.isCounted = true;
  for (int i = choices.Below(4); i > 0; --i) {
    model.numbers.push_back(choices.Number());
    model.labels.push_back(choices.Text());
    definition->AddValue(model.numbers.back(), model.labels.back());
  }
  if (choices.Flag()) {
    const double low = choices.Number();
    model.interval = {low, choices.Number()};
    definition->SetInterval(BINNumericInterval(low, model.interval->second));
  }
  return {std::move(definition), model};
}

MadeDefinition makeString(Choices& choices) {
  auto definition = std::make_unique<CountingStringUserMissing>(madeDefinitions);
  Definition model;
  model.isCounted = true;
  model.isString = true;
  for (int i = choices.Below(4); i > 0; --i) {
    model.texts.push_back(choices.Text());
    model.labels.push_back(choices.Text());
    definition->AddValue(model.texts.back(), model.labels.back());
  }
  return {std::move(definition), model};
}

MadeDefinition makeForeign(Choices& choices) {
  Definition model;
  model.isForeign = true;
  model.isString = choices.Flag();
  return {std::make_unique<ForeignUserMissing>(model.isString ? IBINUserMissing::StringData
                                                              : IBINUserMissing::NumericData),
          model};
}

MadeDefinition makeDefinition(Choices& choices) {
  switch (choices.Below(8)) {
    case 0:
      return {};  // null: no definition
    case 1:
      return makeForeign(choices);
    case 2:
    case 3:
    case 4:
      return makeString(choices);
    default:
      return makeNumeric(choices);
  }
}

// `Owner` is the variable, or the encoder of a categorical one.
template <typename Owner>
void replaceDefinition(Choices& choices, Owner& owner, Variable& model) {
  if (choices.OneIn(6)) {
    check(owner.SetUserMissingInfo(owner.GetUserMissingInfo()), "the held definition again");
    model.isLent = model.missing.has_value();
    return;
  }
  MadeDefinition made = makeDefinition(choices);
  const bool isAccepted = !made.model || made.model->isString == model.HasStringEncoder();
  check(owner.SetUserMissingInfo(made.definition.get()) == isAccepted, "replace definition");
  if (isAccepted) {
    static_cast<void>(made.definition.release());
    model.missing = made.model;
    model.isLent = model.missing.has_value();
  }
}

void changeLabels(Choices& choices, IBINEncoder& encoder, Variable& model) {
  if (choices.Flag()) {
    const std::vector<std::string> labels = choices.Several(5, [&] { return choices.Text(); });
    encoder.SetValueLabels(labels);
    model.valueLabels = labels;
  } else if (!model.valueLabels.empty() && choices.OneIn(4)) {
    // A label that stands among the labels, which may move while it is set.
    const std::string first = model.valueLabels.front();
    const int code = model.Codes() - 1;
    encoder.SetValueLabel(code, encoder.GetValueLabels()->front());
    model.SetValueLabel(code, first);
    encoder.SetValueLabels(*encoder.GetValueLabels());
  } else {
    const int code = choices.Index(model.Codes());
    const std::string label = choices.Text();
    encoder.SetValueLabel(code, label);
    model.SetValueLabel(code, label);
  }
}

void encode(Choices& choices, IBINEncoder& encoder, Variable& model) {
  const bool adds = choices.Below(3) != 0;
  if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(&encoder)) {
    const double value = choices.Number();
    check(isSame(adds ? numbers->Encode(value) : numbers->EncodeConst(value),
                 adds ? model.Encode(value) : model.EncodeConst(value)),
          "encode a number");
  } else {
    auto& texts = dynamic_cast<BINStringEncoder&>(encoder);
    const std::string value = choices.Text();
    check(isSame(adds ? texts.Encode(value) : texts.EncodeConst(value),
                 adds ? model.Encode(value) : model.EncodeConst(value)),
          "encode a text");
  }
}

void stepOfCategoricalEncoder(Choices& choices, IBINEncoder& encoder, Variable& model) {
  switch (choices.Below(6)) {
    case 0:
      return changeLabels(choices, encoder, model);
    case 1:
      return replaceDefinition(choices, encoder, model);
    case 2: {
      const std::unique_ptr<IBINEncoder> clone(encoder.Clone());
      compare("clone of an encoder", DisplayOf(*clone), DisplayOf(encoder));
      check(clone->GetUserMissingInfo() == nullptr ||
                clone->GetUserMissingInfo() != encoder.GetUserMissingInfo(),
            "a clone has a definition of its own");
      return;
    }
    default:
      return encode(choices, encoder, model);
  }
}

// A weight encoder only borrows definitions, so what is set must live in the variable.
void stepOfWeightEncoder(Choices& choices, BINRoundEncoder& encoder, IBINVariable& variable,
                         Variable& model) {
  switch (choices.Below(4)) {
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
      model.rounding = choices.OneIn(4) ? choices.AnyInt() : choices.Below(3);
      BINRoundEncoder other(static_cast<IBINVariable::BINWRoundingOption>(model.rounding));
      other.SetUserMissingInfo(encoder.GetUserMissingInfo());
      encoder = other;
      const BINRoundEncoder& self = encoder;
      encoder = self;
      return;
    }
    default: {
      encoder.SetValueLabels({"ignored"});
      encoder.SetValueLabel(choices.AnyInt(), "ignored");
      BINStringUserMissing refused;
      check(!encoder.SetUserMissingInfo(&refused), "no texts for a weight encoder");
      const std::unique_ptr<IBINEncoder> clone(encoder.Clone());
      compare("a clone borrows", clone->GetUserMissingInfo(), encoder.GetUserMissingInfo());
    }
  }
}

void stepOfEncoder(Choices& choices, IBINVariable& variable, Variable& model) {
  IBINEncoder* encoder = variable.GetEncoder();
  if (auto* weights = dynamic_cast<BINRoundEncoder*>(encoder)) {
    stepOfWeightEncoder(choices, *weights, variable, model);
  } else if (encoder != nullptr) {
    stepOfCategoricalEncoder(choices, *encoder, model);
  }
}

// Assigns a variable of either list to one of its class, which may be itself.
void assignVariable(Choices& choices, ListPair& pair, ListPair& other, int to) {
  ListPair& giving = choices.Flag() && other.plain.Size() > 0 ? other : pair;
  const int from = choices.Below(giving.plain.Size());
  const bool isSelf = &giving == &pair && from == to;
  Variable& target = pair.plain.At(to);
  const Variable source = giving.plain.At(from);
  if (target.kind != source.kind) {
    return;
  }
  const int rounding = target.rounding;
  const bool isLent = target.isLent;
  if (source.IsCategorical()) {
    dynamic_cast<BINCatVar&>(*pair.host.GetVarAt(to)) =
        dynamic_cast<BINCatVar&>(*giving.host.GetVarAt(from));
  } else if (source.kind == Kind::kScale) {
    dynamic_cast<BINContVar&>(*pair.host.GetVarAt(to)) =
        dynamic_cast<BINContVar&>(*giving.host.GetVarAt(from));
  } else {
    dynamic_cast<BINWeightVar&>(*pair.host.GetVarAt(to)) =
        dynamic_cast<BINWeightVar&>(*giving.host.GetVarAt(from));
  }
  target = source;
  target.rounding = rounding;  // the encoder stays
  target.isLent = isSelf ? isLent : target.missing.has_value();
}

void cloneVariable(IBINVariable& variable, const Variable& model) {
  const std::unique_ptr<IBINVariable> clone(variable.Clone());
  Variable modelOfClone = model;
  modelOfClone.isLent = model.missing.has_value();
  compareVariable(*clone, modelOfClone);
}

// Asks a definition of that class, assigns to it and adds what stands in the vectors that grow.
template <typename Class, typename Value>
void changeDefinition(Choices& choices, MadeDefinition& made, const MadeDefinition& other,
                      std::vector<Value> Definition::*values, const Value& value) {
  auto* definition = dynamic_cast<Class*>(made.definition.get());
  if (definition == nullptr) {
    return;
  }
  Definition& model = *made.model;
  compare("contains", definition->Contains(value), model.Contains(value));
  const bool isSelf = choices.Flag();
  const auto* giving = isSelf ? definition : dynamic_cast<Class*>(other.definition.get());
  if (giving != nullptr) {
    *definition = *giving;
    model = isSelf ? model : *other.model;
  }
  if (definition->GetNDiscreteValues() > 0) {
    definition->AddValue(definition->GetDiscreteValues().front(),
                         definition->GetValueLabels().front());
    (model.*values).push_back((model.*values).front());
    model.labels.push_back(model.labels.front());
  }
  compareDefinition(*definition, model);
}

void askStatus(IBINVariable& variable, Variable& model) {
  const int declared = model.UpdateDeclared();
  const auto expected = !model.IsCategorical() || declared >= 2 ? IBINVariable::VarValid
                        : declared == 1                         ? IBINVariable::VarSingleCategory
                                                                : IBINVariable::VarNoCategories;
  compare("status of a variable", variable.GetVarStatus(), expected);
}

}  // namespace

void compareDefinitionsAlive(const ListPair& left, const ListPair& right) {
  int counted = 0;
  for (const ListPair* pair : {&left, &right}) {
    for (const Variable& variable : pair->plain.variables) {
      counted += variable.missing && variable.missing->isCounted ? 1 : 0;
    }
  }
  compare("definitions alive", madeDefinitions.alive, counted);
}

void stepOfVariable(Choices& choices, ListPair& pair, ListPair& other) {
  if (pair.plain.Size() == 0) {
    return;
  }
  const int index = choices.Below(pair.plain.Size());
  IBINVariable& variable = *pair.host.GetVarAt(index);
  Variable& model = pair.plain.At(index);
  switch (choices.Below(10)) {
    case 0:
      model.label = choices.Text();
      return variable.SetVariableLabel(model.label);
    case 1: {
      // Past the list, whose target index stays.
      const int role = choices.AnyInt();
      variable.SetVariableRole(static_cast<IBINVariable::VariableRole>(role));
      model.role = model.kind == Kind::kWeight ? plain_model::kWeightRole : role;
      return;
    }
    case 2:
      if (auto* categorical = dynamic_cast<BINCatVar*>(&variable)) {
        model.declared = choices.AnyInt();
        categorical->SetNumberOfCategories(model.declared);
      }
      return;
    case 3:
      compare("update categories", variable.UpdateNumberOfCategories(), model.UpdateDeclared());
      return;
    case 4:
      return askStatus(variable, model);
    case 5:
      return replaceDefinition(choices, variable, model);
    case 6:
      return assignVariable(choices, pair, other, index);
    case 7:
      return cloneVariable(variable, model);
    default:
      return stepOfEncoder(choices, variable, model);
  }
}

void stepsOfEncoders(Choices& choices) {
  const std::vector<double> numbers = choices.Several(60, [&] { return choices.Number(); });
  const std::vector<std::string> texts = choices.Several(60, [&] { return choices.Text(); });
  BINCatNumEncoder ofNumbers(numbers);
  BINStringEncoder ofTexts(texts);
  BINCatNumEncoder oneByOne(choices.AnyInt());
  BINStringEncoder textByText(choices.AnyInt());
  Variable model;
  for (const double value : numbers) {
    compare("encode one by one", oneByOne.Encode(value), model.Encode(value));
    compare("encode at once", ofNumbers.EncodeConst(value), model.EncodeConst(value));
  }
  compare("both have the same numbers", DisplayOf(oneByOne), DisplayOf(ofNumbers));
  model = Variable();
  for (const std::string& value : texts) {
    compare("encode text by text", textByText.Encode(value), model.Encode(value));
    compare("encode texts at once", ofTexts.EncodeConst(value), model.EncodeConst(value));
  }
  compare("both have the same texts", DisplayOf(textByText), DisplayOf(ofTexts));
}

void stepsOfDefinitions(Choices& choices) {
  MadeDefinition first = makeDefinition(choices);
  if (first.definition == nullptr) {
    return;
  }
  const std::unique_ptr<IBINUserMissing> clone(first.definition->Clone());
  const Definition before = *first.model;
  compare("clone of a definition", DisplayOf(*clone), DisplayOf(*first.definition));
  MadeDefinition second = makeDefinition(choices);
  if (choices.OneIn(4)) {
    second = {std::unique_ptr<IBINUserMissing>(clone->Clone()), before};
  }
  const bool isEqual = second.model && before.IsEqualTo(*second.model);
  compare("equal definitions", first.definition->IsEqualTo(second.definition.get()), isEqual);
  changeDefinition<BINNumericUserMissing>(choices, first, second, &Definition::numbers,
                                          choices.Number());
  changeDefinition<BINStringUserMissing>(choices, first, second, &Definition::texts,
                                         choices.Text());
  compareDefinition(*clone, before);
}

}  // namespace mcbinning_tests
