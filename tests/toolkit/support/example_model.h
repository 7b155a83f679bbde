/// A model with something in every field.
#ifndef MCBIN_TESTS_TOOLKIT_SUPPORT_EXAMPLE_MODEL_H
#define MCBIN_TESTS_TOOLKIT_SUPPORT_EXAMPLE_MODEL_H

#include <limits>

#include "toolkit/model/model.h"

namespace mcbin::testing {

inline AttributeModel exampleAttribute() {
  AttributeModel attribute;
  attribute.name = "in\"come";
  attribute.missing.values = {-1.0, 999.5};
  attribute.missing.range = {-std::numeric_limits<double>::infinity(), -100.0};
  attribute.distinctValues = 5;
  attribute.minimum = 0.1 + 0.2;
  attribute.maximum = std::numeric_limits<double>::infinity();
  attribute.totalWeight = 10.0;
  attribute.totalWeightWithMissing = 14.0;
  attribute.cutPoints = {0.5, 1e300};
  attribute.bins = {{4.0, {3.0, 1.0}}, {5.0, {0.0, 5.0}}, {1.0, {1.0, 0.0}}};
  attribute.missingCases = {2.0, {1.0, 1.0}};
  attribute.userMissingCases = {1.0, {0.0, 1.0}};
  attribute.entropyBefore = 0.9709505944546686;
  attribute.entropyAfter = 0.325;
  return attribute;
}

inline Model exampleModel() {
  Model model;
  model.program = "mcbin 1.0.0";
  model.library = "a library";
  model.closedSide = ClosedSide::Left;
  model.source = {"loans.csv", "t", std::nullopt};
  model.options = {20, 100, 0.25, {"NA", "?"}, {"in*"}, {"id"}, {{"id", "category"}}};
  model.cases = {16, 14, 2};
  model.target = TargetModel{"default", {"no", "yes"}, {"unknown"}, {5.0, 8.0}, 1.0};
  model.weight = WeightModel{"w", {{9.0}, {}}, WeightRounding::Round};
  model.attributes.push_back(exampleAttribute());
  AttributeModel uncut;
  uncut.name = "é";
  uncut.status = {120017, Severity::Warning, "not cut: because"};
  uncut.bins = {{0.0, {0.0, 0.0}}};
  uncut.missingCases.classWeights = {0.0, 0.0};
  uncut.userMissingCases.classWeights = {0.0, 0.0};
  model.attributes.push_back(uncut);
  model.leftOut = {{"id", "declared a category"}};
  return model;
}

}  // namespace mcbin::testing

#endif
