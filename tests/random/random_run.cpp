#include "random/random_run.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace mcbinning_tests {

namespace {

using plain_model::Kind;
using plain_model::Settings;
using plain_model::Variable;
using plain_model::VariableList;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

double bandValue(Choices& choices, const CellPlan& plan, int caseClass) {
  std::vector<Band> ofClass;
  for (const Band& band : plan.bands) {
    if (band.valueClass == caseClass) {
      ofClass.push_back(band);
    }
  }
  const Band& band = ofClass.empty() || choices.Chance(plan.noise) ? choices.Pick(plan.bands)
                                                                   : choices.Pick(ofClass);
  return band.from + choices.Between(0, static_cast<int>(band.to - band.from));
}

double scaleCell(Choices& choices, const CellPlan& plan, int caseClass) {
  switch (plan.style) {
    case CellStyle::kFewIntegers:
      return choices.Below(plan.distinct);
    case CellStyle::kContinuous:
      return choices.Unit();
    case CellStyle::kBands:
      return bandValue(choices, plan, caseClass);
    case CellStyle::kShifted:
      return 2.0 * caseClass + choices.Below(12) / 4.0;
    case CellStyle::kGrid:
      return 0.1 * choices.Below(plan.distinct);
    case CellStyle::kNeighbours:
      return 1.0 + choices.Below(plan.distinct) * std::numeric_limits<double>::epsilon();
    case CellStyle::kSpecials:
      return choices.Flag() ? choices.Below(plan.distinct)
                            : choices.Pick({choices.Special(), std::nextafter(kLargest, 0.0),
                                            std::nextafter(-kLargest, 0.0), -kLargest});
    case CellStyle::kNumbers:
      return choices.Number();
    case CellStyle::kAllMissing:
      return MCMV::gMissingValue;
    default:
      return 42.0;
  }
}

double codeCell(Choices& choices, const CellPlan& plan, int caseClass) {
  const bool follows = caseClass < plan.classes && !choices.Chance(plan.noise);
  const int code = follows ? caseClass : choices.Below(plan.classes);
  if (plan.style == CellStyle::kOddCodes && choices.Chance(0.2)) {
    return choices.Pick({-1.0, -1.5, -0.5, -0.0, 0.75, 1.9, -1.999});
  }
  if (plan.style == CellStyle::kRefusedCodes && choices.Chance(0.03)) {
    return choices.Pick({256.0, -2.0, -7.5, 1e10, -1e300, 2147483648.0, -2147483649.0, 4294967296.0,
                         kNaN, kInfinity, -kInfinity, kLargest, 255.0});
  }
  if (plan.style == CellStyle::kHighCodes && choices.Chance(0.1)) {
    return choices.Pick({255.0, 255.9, 100.0, 7.0});
  }
  if (plan.style == CellStyle::kAnyCodes) {
    return choices.Number();
  }
  return code;
}

double weightCell(Choices& choices, const CellPlan& plan) {
  if (choices.Chance(plan.missing)) {
    return choices.Pick({0.0, -0.0, -1.0, 0.3, 0.49999999999999994, MCMV::gMissingValue, kNaN,
                         kInfinity, -kInfinity});
  }
  switch (plan.style) {
    case CellStyle::kQuarters:
      return 0.25 * choices.Between(1, 16);
    case CellStyle::kFractions:
      return 3.0 * choices.Unit();
    case CellStyle::kLargeWeights:
      return std::floor(1e6 * choices.Unit()) + 0.5;
    case CellStyle::kExtremeWeights:
      return choices.Pick({kDenormal, 1e-300, 1e-17, 0.1, 1.0, 1e17, 1e300, kLargest});
    case CellStyle::kAnyWeights:
      return choices.Number();
    default:
      return choices.Between(1, 5);
  }
}

// A missing cell of a variable; a user-missing one where the list says what is.
double missingCell(Choices& choices, const Variable& variable) {
  if (variable.kind == Kind::kCategorical) {
    return choices.Flag() ? -1.0 : MCMV::gMissingValue;
  }
  const bool hasNumbers = variable.missing && !variable.missing->numbers.empty();
  return hasNumbers && choices.Flag() ? choices.Pick(variable.missing->numbers)
                                      : MCMV::gMissingValue;
}

double drawCell(Choices& choices, const Variable& variable, const CellPlan& plan, int caseClass) {
  if (variable.kind == Kind::kWeight) {
    return weightCell(choices, plan);
  }
  if (choices.Chance(plan.missing)) {
    return missingCell(choices, variable);
  }
  return variable.kind == Kind::kScale ? scaleCell(choices, plan, caseClass)
                                       : codeCell(choices, plan, caseClass);
}

std::size_t drawNumberOfCases(Choices& choices) {
  if (choices.Chance(0.003)) {
    return static_cast<std::size_t>(choices.Between(10001, 25000));
  }
  switch (choices.Weighted({1, 8, 45, 40, 6})) {
    case 0:
      return 0;
    case 1:
      return static_cast<std::size_t>(choices.Between(1, 3));
    case 2:
      return static_cast<std::size_t>(choices.Between(4, 30));
    case 3:
      return static_cast<std::size_t>(choices.Between(31, 120));
    default:
      return static_cast<std::size_t>(choices.Between(121, 500));
  }
}

// Adds every case once more with the scale values negated: symmetric data make ties.
void mirror(const VariableList& list, std::vector<Case>& cases) {
  const std::size_t original = cases.size();
  for (std::size_t i = 0; i < original; ++i) {
    Case reflected = cases[i];
    for (std::size_t v = 0; v < reflected.size(); ++v) {
      if (list.variables[v].kind == Kind::kScale && reflected[v] != MCMV::gMissingValue) {
        reflected[v] = -reflected[v];
      }
    }
    cases.push_back(reflected);
  }
}

std::vector<Case> drawCases(Choices& choices, const PlannedList& planned, double nullShare) {
  const bool classesAreEven = choices.Flag();
  std::vector<Case> cases;
  for (std::size_t left = drawNumberOfCases(choices); left > 0 && !choices.IsUsedUp(); --left) {
    Case& host = cases.emplace_back();
    if (choices.Chance(nullShare)) {
      continue;
    }
    const int caseClass =
        classesAreEven || choices.Chance(0.4) ? choices.Below(planned.classes) : 0;
    for (std::size_t i = 0; i < planned.plans.size(); ++i) {
      host.push_back(
          drawCell(choices, planned.list.plain.variables[i], planned.plans[i], caseClass));
    }
  }
  return cases;
}

std::vector<Case> drawAnyCases(Choices& choices, const PlannedList& planned) {
  const double nullShare = choices.Chance(0.1) ? choices.Pick({0.1, 1.0}) : 0.0;
  const bool isMirrored = choices.Chance(0.3);
  const int copies = choices.Chance(0.05) ? choices.Between(2, 10) : 1;
  std::vector<Case> cases = drawCases(choices, planned, nullShare);
  if (isMirrored) {
    mirror(planned.list.plain, cases);
  }
  const std::vector<Case> once = cases;
  for (int copy = 1; copy < copies && once.size() < 100; ++copy) {
    cases.insert(cases.end(), once.begin(), once.end());
  }
  return cases;
}

Settings drawSettings(Choices& choices) {
  Settings settings;
  settings.rightClosed = choices.Chance(0.5);
  settings.numberOfBins =
      choices.Chance(0.01) ? -1 : choices.Pick({2, 3, 4, 5, 7, 10, 11, 20, 97, 999});
  settings.distinctValueThreshold =
      choices.Pick({-1, 0, 0, 1, 2, 5, 10, 30, std::numeric_limits<int>::max()});
  settings.smallBinThreshold =
      choices.Pick({0.0, 0.0, 0.1, 0.5, 0.8, 1.0, 1.0, 1.0, choices.Unit()});
  return settings;
}

// Later runs may change what the algorithm's own settings say; a value can only be set to a good
// one.
Settings changeSettings(Choices& choices, Settings settings) {
  if (choices.Chance(0.5)) {
    settings = drawSettings(choices);
    settings.numberOfBins = choices.Pick({2, 3, 8, 22});
    settings.distinctValueThreshold = choices.Pick({0, 1, 5, 30});
  }
  return settings;
}

int drawTarget(Choices& choices, const VariableList& list) {
  std::vector<int> categorical;
  for (int i = 0; i < list.Size(); ++i) {
    if (list.At(i).level == plain_model::kNumericLevel ||
        list.At(i).level == plain_model::kStringLevel) {
      categorical.push_back(i);
    }
  }
  return categorical.empty() || choices.Chance(0.1) ? choices.Index(list.Size())
                                                    : choices.Pick(categorical);
}

void drawSelection(Choices& choices, const VariableList& list, bool supervised, Request& request) {
  const int form = choices.Weighted({50, 24, 24, 1, 1});
  const int length = choices.Chance(0.03) ? 0 : choices.Between(1, 5);
  if (form == 1 || form == 2 || form == 4) {
    request.attributes.emplace();
    for (int i = 0; i < length; ++i) {
      request.attributes->push_back(choices.Index(list.Size()));
    }
  }
  if (supervised && form >= 2) {
    request.targets.emplace();
    for (int i = form == 4 ? 1 : 0; i < length; ++i) {
      request.targets->push_back(drawTarget(choices, list));
    }
  }
}

}  // namespace

RandomRun makeRandomRun(Choices& choices) {
  const PlannedList planned = makeAnyList(choices);
  RandomRun run;
  run.list = planned.list;
  run.supervised = choices.Chance(0.7);
  run.requests.resize(static_cast<std::size_t>(1 + choices.Weighted({70, 22, 8})));
  Settings settings = drawSettings(choices);
  for (Request& request : run.requests) {
    request.settings = settings;
    drawSelection(choices, planned.list.plain, run.supervised, request);
    request.cancelBefore = choices.Chance(0.01);
    settings = changeSettings(choices, settings);
  }
  for (Request& request : run.requests) {
    request.cases = drawAnyCases(choices, planned);
  }
  return run;
}

RandomRun makeOrdinaryRun(Choices& choices) {
  const PlannedList planned = makeOrdinaryList(choices);
  RandomRun run;
  run.list = planned.list;
  Request& request = run.requests.emplace_back();
  request.settings = drawSettings(choices);
  request.settings.numberOfBins = choices.Pick({2, 3, 5, 10, 30});
  request.cases = drawCases(choices, planned, 0.0);
  return run;
}

}  // namespace mcbinning_tests
