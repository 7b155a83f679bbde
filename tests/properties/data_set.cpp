#include "properties/data_set.h"

#include <cstddef>
#include <limits>

namespace properties {

namespace {

/// How the values of one attribute are drawn.
struct Column {
  int style = 0;
  int distinct = 2;
  double noise = 0.0;
  double missing = 0.0;
};

Column drawColumn(Dice& dice) {
  return {dice.Below(6), dice.Pick({1, 2, 5, 12, 40, 200}), dice.Pick({0.0, 0.1, 0.4}),
          dice.Pick({0.0, 0.0, 0.1, 0.6})};
}

double drawValue(Dice& dice, const DataSet& data, const Column& column, int caseClass) {
  if (dice.Chance(column.missing)) {
    return drawMissing(dice, data);
  }
  const double draw = dice.Below(column.distinct);
  const int valueClass = dice.Chance(column.noise) ? dice.Below(data.categories) : caseClass;
  switch (column.style) {
    case 0:
      return draw;
    case 1:
      return 0.1 * draw - 3.0;
    case 2:
      return dice.Unit();
    case 3:  // a band of values of each class
      return 10.0 * valueClass + dice.Below(8);
    case 4:  // each class has two bands
      return 10.0 * valueClass + (dice.Chance(0.5) ? 0.0 : 100.0) + dice.Unit();
    default:  // neighbouring numbers
      return 1.0 + draw * std::numeric_limits<double>::epsilon();
  }
}

int drawNumberOfCases(Dice& dice) {
  switch (dice.Weighted({1, 10, 50, 39})) {
    case 0:
      return 0;
    case 1:
      return dice.Between(1, 4);
    case 2:
      return dice.Between(5, 80);
    default:
      return dice.Between(81, 400);
  }
}

}  // namespace

double drawWeight(Dice& dice, Weights weights) {
  switch (weights) {
    case Weights::kNone:
      return 1.0;
    case Weights::kQuarters:
      return 0.25 * dice.Between(0, 16);
    case Weights::kFractions:
      return 3.0 * dice.Unit();
    default:
      return dice.Between(0, 5);
  }
}

double drawCode(Dice& dice, const DataSet& data) { return dice.Below(data.categories); }

double drawMissing(Dice& dice, const DataSet& data) {
  return dice.Pick({kMissing, data.missingValue, data.missingLow, data.missingHigh});
}

void addEveryCategory(DataSet& data) {
  const std::vector<double> missing(static_cast<std::size_t>(data.attributes), kMissing);
  for (int code = 0; code < data.categories; ++code) {
    data.cases.push_back({missing, static_cast<double>(code), 1.0});
  }
}

DataSet makeDataSet(Dice& dice) {
  DataSet data;
  data.attributes = dice.Between(1, 3);
  data.categories = dice.Between(2, 5);
  data.weights = dice.Pick({Weights::kNone, Weights::kTruncated, Weights::kRounded,
                            Weights::kQuarters, Weights::kFractions});
  data.rightBorderClosed = dice.Chance(0.5);
  data.numberOfBins = dice.Pick({2, 3, 5, 10, 30});
  data.distinctValueThreshold = dice.Pick({0, 0, 3, 20});
  data.smallBinThreshold = dice.Pick({0.0, 0.0, 0.5, 1.0});
  std::vector<Column> columns;
  for (int i = 0; i < data.attributes; ++i) {
    columns.push_back(drawColumn(dice));
  }
  data.cases.resize(static_cast<std::size_t>(drawNumberOfCases(dice)));
  for (Case& one : data.cases) {
    const int caseClass = dice.Below(data.categories);
    for (const Column& column : columns) {
      one.values.push_back(drawValue(dice, data, column, caseClass));
    }
    one.code = dice.Chance(0.05) ? dice.Pick({kMissing, -1.0}) : caseClass;
    one.weight = drawWeight(dice, data.weights);
  }
  return data;
}

}  // namespace properties
