/// Random variable lists together with the way in which each variable's cells are drawn.
#ifndef MCBINNING_TESTS_RANDOM_PLANNED_LIST_H
#define MCBINNING_TESTS_RANDOM_PLANNED_LIST_H

#include <vector>

#include "random/choices.h"
#include "random/list_pair.h"

namespace mcbinning_tests {

enum class CellStyle {
  // scale variables
  kFewIntegers,
  kContinuous,
  kGrid,
  kNeighbours,
  kShifted,
  kBands,
  kConstant,
  kSpecials,
  kNumbers,
  kAllMissing,
  // categorical variables
  kCodes,
  kOddCodes,
  kRefusedCodes,
  kHighCodes,
  kAnyCodes,
  // weights
  kCounts,
  kQuarters,
  kFractions,
  kLargeWeights,
  kExtremeWeights,
  kAnyWeights
};

/// A band of values in which one class is found.
struct Band {
  double from;
  double to;
  int valueClass;
};

/// How the cells of one variable are drawn.
struct CellPlan {
  CellStyle style = CellStyle::kConstant;
  int distinct = 1;         // about how many different values
  int classes = 1;          // codes 0 to classes - 1 for categorical variables
  double noise = 0.0;       // share of cells that do not follow the case's class
  double missing = 0.0;     // share of missing cells
  std::vector<Band> bands;  // kBands only
};

struct PlannedList {
  ListPair list;
  std::vector<CellPlan> plans;  // parallel to the variables
  int classes = 2;              // of the cases' hidden class
};

/// Any list, made to reach the rare rules often.
PlannedList makeAnyList(Choices& choices);

/// Scale attributes of moderate numbers, each with the same user-missing values, then a target of
/// valid codes, then maybe a weight.
PlannedList makeOrdinaryList(Choices& choices);

}  // namespace mcbinning_tests

#endif
