/// Random variable lists together with the way in which each variable's cells are drawn.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_RANDOM_LIST_H
#define MCBINNING_TESTS_PLAIN_MODEL_RANDOM_LIST_H

#include <mcbinning/variable_list.h>

#include <vector>

#include "plain_model/dice.h"
#include "plain_model/model.h"

namespace plain_model {

enum class CellStyle {
  // scale variables
  kConstant,
  kFewIntegers,
  kContinuous,
  kBands,
  kShifted,
  kGrid,
  kNeighbours,
  kSpecials,
  kAllMissing,
  // categorical variables
  kCodes,
  kOddCodes,
  kRefusedCodes,
  kHighCodes,
  // weights
  kCounts,
  kQuarters,
  kFractions,
  kLargeWeights,
  kExtremeWeights
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
  BINVarList host;
  VariableList plain;
  std::vector<CellPlan> plans;  // parallel to the variables
  int classes = 2;              // of the cases' hidden class
};

PlannedList makeRandomList(Dice& dice);

}  // namespace plain_model

#endif
