#include <string>
#include <vector>

#include "random/agreement.h"
#include "random/list_comparison.h"
#include "random/steps.h"
#include "support/display.h"

namespace mcbinning_tests {

namespace {

using plain_model::Variable;

constexpr int kMostVariables = 10;
constexpr int kMostSteps = 400;

int drawRole(Choices& choices) { return choices.OneIn(12) ? choices.AnyInt() : choices.Below(4); }

void addVariable(Choices& choices, ListPair& pair) {
  Variable variable;
  variable.name = choices.Text();
  variable.label = choices.Text();
  variable.role = drawRole(choices);
  variable.valueLabels = choices.Several(4, [&] { return choices.Text(); });
  const bool withLabels = choices.Flag();
  switch (choices.Below(6)) {
    case 0:
      pair.AddNumbers(variable, choices.Several(6, [&] { return choices.Number(); }), withLabels);
      return;
    case 1:
      pair.AddTexts(variable, choices.Several(6, [&] { return choices.Text(); }), withLabels);
      return;
    case 2:
      variable.valueLabels.clear();
      variable.level = choices.OneIn(8) ? choices.AnyInt() : choices.Below(6);
      variable.declared = choices.OneIn(4) ? choices.AnyInt() : choices.Below(6);
      pair.AddDeclared(variable);
      return;
    case 3:
      variable.valueLabels.clear();
      variable.rounding = choices.OneIn(4) ? choices.AnyInt() : choices.Below(3);
      pair.AddWeight(variable);
      return;
    case 4:
      pair.AddScales(choices.Several(4, [&] { return choices.Text(); }), variable.role);
      return;
    default:
      variable.valueLabels.clear();
      pair.AddScale(variable);
  }
}

void declareMissing(Choices& choices, ListPair& pair) {
  const int index = choices.Index(pair.plain.Size());
  const std::string label = choices.Text();
  switch (choices.Below(3)) {
    case 0:
      return pair.AddMissing(index, choices.Number(), label);
    case 1:
      return pair.AddMissing(index, choices.Text(), label);
    default: {
      const double low = choices.Number();
      return pair.SetMissingInterval(index, low, choices.Number());
    }
  }
}

void askValidity(ListPair& pair) {
  std::vector<int> single = {7};
  std::vector<int> empty = {7};
  std::vector<int> plainSingle;
  std::vector<int> plainEmpty;
  compare("validity", pair.host.IsValidList(single, empty),
          pair.plain.IsValid(plainSingle, plainEmpty));
  compare("variables of one category", single, plainSingle);
  compare("variables without categories", empty, plainEmpty);
}

// One call that adds, changes or removes a variable through the list, or asks it something.
void stepOfList(Choices& choices, ListPair& pair) {
  switch (choices.Below(12)) {
    case 0:
    case 1:
      return declareMissing(choices, pair);
    case 2:
    case 3: {
      const int index = choices.Index(pair.plain.Size());
      return pair.SetRole(index, drawRole(choices));
    }
    case 4:
      return choices.Flag() ? pair.Remove(choices.Index(pair.plain.Size()))
                            : pair.Remove(choices.Text());
    case 5:
      return askValidity(pair);
    case 6:
      return compare("sum of categories", pair.host.UpdateNumbersOfCategories(),
                     pair.plain.UpdateNumbersOfCategories());
    case 7: {
      const std::string name = choices.Text();
      compare("find", pair.host.FindVariable(name), pair.plain.Find(name));
      const int index = choices.AnyInt();
      return compare("at", pair.host.GetVarAt(index) != nullptr, pair.plain.Has(index));
    }
    default:
      if (pair.plain.Size() < kMostVariables) {
        addVariable(choices, pair);
      }
  }
}

void compareMerging(const ListPair& left, const ListPair& right) {
  constexpr int kUntouched = -77;
  int where = kUntouched;
  const auto difference = left.plain.FirstDifference(right.plain);
  compare("lists can be merged", left.host.CanMergeWith(right.host, where),
          !difference.has_value());
  compare("where lists differ", where, difference.value_or(kUntouched));
}

void copyLists(Choices& choices, ListPair& left, ListPair& right) {
  switch (choices.Below(4)) {
    case 0: {
      const BINVarList& self = left.host;
      left.host = self;
      return;
    }
    case 1: {
      ListPair copy(left);
      return compareList(copy.host, copy.plain);
    }
    case 2:
      right = left;
      return;
    default:
      left = right;
  }
}

}  // namespace

void stepsOfLists(Choices& choices) {
  ListPair left;
  ListPair right;
  for (int step = 0; step < kMostSteps && !choices.IsUsedUp(); ++step) {
    const bool isRight = choices.OneIn(6);
    ListPair& changed = isRight ? right : left;
    switch (choices.Below(12)) {
      case 0:
        copyLists(choices, left, right);
        break;
      case 1:
        compareMerging(left, right);
        compareMerging(left, left);
        break;
      case 2:
        check(!DisplayOf(left.host).empty(), "list is displayed");
        break;
      case 3:
      case 4:
      case 5:
      case 6:
        stepOfVariable(choices, changed, isRight ? left : right);
        break;
      default:
        stepOfList(choices, changed);
    }
    compareList(left.host, left.plain);
    compareList(right.host, right.plain);
    compareDefinitionsAlive(left, right);
  }
}

}  // namespace mcbinning_tests
