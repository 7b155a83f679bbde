#include "plain_model/random_run.h"

#include <mccomvor/missing_value.h>

#include <cmath>
#include <limits>

#include "plain_model/dice.h"
#include "plain_model/random_list.h"

namespace plain_model {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

double bandValue(Dice& dice, const CellPlan& plan, int caseClass) {
  std::vector<Band> ofClass;
  for (const Band& band : plan.bands) {
    if (band.valueClass == caseClass) {
      ofClass.push_back(band);
    }
  }
  const Band& band =
      ofClass.empty() || dice.Chance(plan.noise) ? dice.Pick(plan.bands) : dice.Pick(ofClass);
  return band.from + dice.Between(0, static_cast<int>(band.to - band.from));
}

double scaleCell(Dice& dice, const CellPlan& plan, int caseClass) {
  const double draw = dice.Below(plan.distinct);
  switch (plan.style) {
    case CellStyle::kFewIntegers:
      return draw;
    case CellStyle::kContinuous:
      return dice.Unit();
    case CellStyle::kBands:
      return bandValue(dice, plan, caseClass);
    case CellStyle::kShifted:
      return 2.0 * caseClass + dice.Below(12) / 4.0;
    case CellStyle::kGrid:
      return 0.1 * draw;
    case CellStyle::kNeighbours:
      return 1.0 + draw * std::numeric_limits<double>::epsilon();
    case CellStyle::kSpecials:
      return dice.Chance(0.5)
                 ? draw
                 : dice.Pick({kNaN, -kNaN, kInfinity, -kInfinity, 0.0, -0.0, kDenormal, -kDenormal,
                              kLargest, MCMV::gMissingValue, std::nextafter(kLargest, 0.0),
                              std::nextafter(-kLargest, 0.0), 1e300, -1e300});
    case CellStyle::kAllMissing:
      return MCMV::gMissingValue;
    default:
      return 42.0;
  }
}

double codeCell(Dice& dice, const CellPlan& plan, int caseClass) {
  const bool follows = caseClass < plan.classes && !dice.Chance(plan.noise);
  const int code = follows ? caseClass : dice.Below(plan.classes);
  if (plan.style == CellStyle::kOddCodes && dice.Chance(0.2)) {
    return dice.Pick({-1.0, -1.5, -0.5, -0.0, 0.75, 1.9, -1.999});
  }
  if (plan.style == CellStyle::kRefusedCodes && dice.Chance(0.03)) {
    return dice.Pick({256.0, -2.0, -7.5, 1e10, -1e10, 2147483648.0, kNaN, kInfinity, -kInfinity,
                      kLargest, 255.0});
  }
  if (plan.style == CellStyle::kHighCodes && dice.Chance(0.1)) {
    return dice.Pick({255.0, 255.9, 100.0, 7.0});
  }
  return code;
}

double weightCell(Dice& dice, const CellPlan& plan) {
  if (dice.Chance(plan.missing)) {
    return dice.Pick({0.0, -0.0, -1.0, 0.3, 0.49999999999999994, MCMV::gMissingValue, kNaN,
                      kInfinity, -kInfinity});
  }
  switch (plan.style) {
    case CellStyle::kQuarters:
      return 0.25 * dice.Between(1, 16);
    case CellStyle::kFractions:
      return 3.0 * dice.Unit();
    case CellStyle::kLargeWeights:
      return std::floor(1e6 * dice.Unit()) + 0.5;
    case CellStyle::kExtremeWeights:
      return dice.Pick({kDenormal, 1e-300, 1e-17, 0.1, 1.0, 1e17, 1e300, kLargest});
    default:
      return dice.Between(1, 5);
  }
}

double drawCell(Dice& dice, const Variable& variable, const CellPlan& plan, int caseClass) {
  if (variable.kind == Kind::kWeight) {
    return weightCell(dice, plan);
  }
  if (dice.Chance(plan.missing)) {
    const bool asCode = variable.kind == Kind::kCategorical && dice.Chance(0.5);
    return asCode ? -1.0 : MCMV::gMissingValue;
  }
  return variable.kind == Kind::kScale ? scaleCell(dice, plan, caseClass)
                                       : codeCell(dice, plan, caseClass);
}

int drawNumberOfCases(Dice& dice) {
  if (dice.Chance(0.003)) {
    return dice.Between(10001, 25000);
  }
  switch (dice.Weighted({1, 8, 45, 40, 6})) {
    case 0:
      return 0;
    case 1:
      return dice.Between(1, 3);
    case 2:
      return dice.Between(4, 30);
    case 3:
      return dice.Between(31, 120);
    default:
      return dice.Between(121, 500);
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

std::vector<Case> drawCases(Dice& dice, const PlannedList& planned) {
  const double nullShare = dice.Chance(0.1) ? dice.Pick({0.1, 1.0}) : 0.0;
  const bool classesAreEven = dice.Chance(0.5);
  std::vector<Case> cases(static_cast<std::size_t>(drawNumberOfCases(dice)));
  for (Case& host : cases) {
    if (dice.Chance(nullShare)) {
      continue;
    }
    const int caseClass = classesAreEven || dice.Chance(0.4) ? dice.Below(planned.classes) : 0;
    for (std::size_t i = 0; i < planned.plans.size(); ++i) {
      host.push_back(drawCell(dice, planned.plain.variables[i], planned.plans[i], caseClass));
    }
  }
  if (dice.Chance(0.3)) {
    mirror(planned.plain, cases);
  }
  return cases;
}

Settings drawSettings(Dice& dice) {
  Settings settings;
  settings.rightClosed = dice.Chance(0.5);
  settings.numberOfBins = dice.Chance(0.01) ? -1 : dice.Pick({2, 3, 4, 5, 7, 10, 11, 20, 97, 999});
  settings.distinctValueThreshold =
      dice.Pick({-1, 0, 0, 1, 2, 5, 10, 30, std::numeric_limits<int>::max()});
  settings.smallBinThreshold = dice.Pick({0.0, 0.0, 0.1, 0.5, 0.8, 1.0, 1.0, 1.0, dice.Unit()});
  return settings;
}

// Later runs may change what the algorithm's own settings say; a value can only be set to a good
// one.
Settings changeSettings(Dice& dice, Settings settings) {
  if (dice.Chance(0.5)) {
    settings = drawSettings(dice);
    settings.numberOfBins = dice.Pick({2, 3, 8, 22});
    settings.distinctValueThreshold = dice.Pick({0, 1, 5, 30});
  }
  return settings;
}

// Mostly a variable of the list, at times an index that is none.
int drawIndex(Dice& dice, const VariableList& list) {
  if (list.Size() == 0 || dice.Chance(0.06)) {
    return dice.Pick({-1, -7, list.Size(), list.Size() + 3, std::numeric_limits<int>::min(),
                      std::numeric_limits<int>::max()});
  }
  return dice.Below(list.Size());
}

int drawTarget(Dice& dice, const VariableList& list) {
  std::vector<int> categorical;
  for (int i = 0; i < list.Size(); ++i) {
    if (list.At(i).level == kNumericLevel || list.At(i).level == kStringLevel) {
      categorical.push_back(i);
    }
  }
  return categorical.empty() || dice.Chance(0.1) ? drawIndex(dice, list) : dice.Pick(categorical);
}

void drawSelection(Dice& dice, const VariableList& list, bool supervised, Request& request) {
  const int form = dice.Weighted({50, 24, 24, 1, 1});
  const int length = dice.Chance(0.03) ? 0 : dice.Between(1, 5);
  if (form == 1 || form == 2 || form == 4) {
    request.attributes.emplace();
    for (int i = 0; i < length; ++i) {
      request.attributes->push_back(drawIndex(dice, list));
    }
  }
  if (supervised && form >= 2) {
    request.targets.emplace();
    for (int i = form == 4 ? 1 : 0; i < length; ++i) {
      request.targets->push_back(drawTarget(dice, list));
    }
  }
}

}  // namespace

RandomRun makeRandomRun(std::uint64_t seed) {
  Dice dice(seed);
  const PlannedList planned = makeRandomList(dice);
  RandomRun run;
  run.hostList = planned.host;
  run.list = planned.plain;
  run.supervised = dice.Chance(0.7);
  const int requests = 1 + dice.Weighted({70, 22, 8});
  Settings settings = drawSettings(dice);
  for (int i = 0; i < requests; ++i) {
    Request request;
    request.settings = settings;
    request.cases = drawCases(dice, planned);
    drawSelection(dice, planned.plain, run.supervised, request);
    request.cancelBefore = dice.Chance(0.01);
    run.requests.push_back(request);
    settings = changeSettings(dice, settings);
  }
  return run;
}

}  // namespace plain_model
