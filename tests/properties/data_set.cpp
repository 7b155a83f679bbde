#include "properties/data_set.h"

#include <mcbinning/user_missing.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace properties {

DataSet::DataSet(Choices& choices) {
  mcbinning_tests::RandomRun run = makeOrdinaryRun(choices);
  list = run.list;
  settings = run.requests.front().settings;
  cases = run.requests.front().cases;
  target = static_cast<std::size_t>(list.plain.target);
}

bool DataSet::IsMissing(std::size_t attribute, double value) const {
  return value == kMissing || list.plain.variables[attribute].IsMissing(value);
}

double DataSet::WeightOf(const Case& one) const {
  return HasWeight() ? list.plain.At(list.plain.weight).EncodeWeight(one.back()).value_or(0.0)
                     : 1.0;
}

bool DataSet::HasExactSums() const {
  return std::all_of(cases.begin(), cases.end(), [this](const Case& one) {
    return std::floor(4.0 * WeightOf(one)) == 4.0 * WeightOf(one);
  });
}

bool DataSet::HasWholeWeights() const {
  return std::all_of(cases.begin(), cases.end(), [this](const Case& one) {
    return std::floor(WeightOf(one)) == WeightOf(one);
  });
}

void DataSet::DropWeight() {
  if (HasWeight()) {
    list.Remove(list.plain.weight);
    for (Case& one : cases) {
      one.pop_back();
    }
  }
}

void DataSet::Scale(double factor) {
  for (std::size_t i = 0; i < target; ++i) {
    plain_model::Definition& plain = *list.plain.variables[i].missing;
    plain.numbers.front() *= factor;
    plain.interval = {plain.interval->first * factor, plain.interval->second * factor};
    auto definition = std::make_unique<BINNumericUserMissing>();
    definition->AddValue(plain.numbers.front(), "");
    definition->SetInterval(BINNumericInterval(plain.interval->first, plain.interval->second));
    list.host.GetVarAt(static_cast<int>(i))->SetUserMissingInfo(definition.release());
    for (Case& one : cases) {
      one[i] = one[i] == kMissing ? kMissing : one[i] * factor;
    }
  }
}

void DataSet::AddEveryCategory() {
  Case one(list.plain.variables.size(), kMissing);
  one.back() = 1.0;
  for (int code = 0; code < list.plain.variables[target].declared; ++code) {
    one[target] = code;
    cases.push_back(one);
  }
}

Case DataSet::WithoutAttributes(Choices& choices) const {
  Case one = choices.Pick(cases);
  for (std::size_t i = 0; i < target; ++i) {
    const plain_model::Definition& missing = *list.plain.variables[i].missing;
    one[i] = choices.Pick(
        {kMissing, missing.numbers.front(), missing.interval->first, missing.interval->second});
  }
  return one;
}

}  // namespace properties
