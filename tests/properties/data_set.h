/// Random data for the properties of the algorithms. Values are moderate numbers; what becomes of
/// NaN and infinite ones is compared case by case elsewhere.
#ifndef MCBINNING_TESTS_PROPERTIES_DATA_SET_H
#define MCBINNING_TESTS_PROPERTIES_DATA_SET_H

#include <mccomvor/missing_value.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "plain_model/dice.h"

namespace properties {

using plain_model::Dice;

inline const double kMissing = MCMV::gMissingValue;

enum class Weights { kNone, kTruncated, kRounded, kQuarters, kFractions };

struct Case {
  std::vector<double> values;  // one per attribute
  double code = 0.0;           // of the target's category
  double weight = 1.0;         // what the case counts for; 0 when it counts for nothing
};

struct DataSet {
  int attributes = 1;
  int categories = 2;
  Weights weights = Weights::kNone;

  /// User-missing in every attribute: one value and the interval of two others.
  double missingValue = 7.0;
  double missingLow = 20.0;
  double missingHigh = 22.5;

  bool rightBorderClosed = true;
  int numberOfBins = 10;
  int distinctValueThreshold = 0;
  double smallBinThreshold = 0.0;
  std::vector<Case> cases;

  bool IsMissing(double value) const {
    return value == kMissing || value == missingValue ||
           (missingLow <= value && value <= missingHigh);
  }

  /// Whether sums of weights are the same in any order, to the last bit.
  bool HasExactSums() const { return weights != Weights::kFractions; }
  bool HasWholeWeights() const {
    return weights != Weights::kFractions && weights != Weights::kQuarters;
  }
};

DataSet makeDataSet(Dice& dice);

/// A case weight of the kind that the data set has.
double drawWeight(Dice& dice, Weights weights);

/// The code of one of the data set's categories.
double drawCode(Dice& dice, const DataSet& data);

/// System-missing or user-missing.
double drawMissing(Dice& dice, const DataSet& data);

/// Adds a case of every category that is missing in every attribute. The number of categories that
/// an algorithm sees is that of the highest code; after this it stays, whatever is done to the
/// cases that count.
void addEveryCategory(DataSet& data);

template <typename T>
void shuffle(Dice& dice, std::vector<T>& items) {
  for (std::size_t i = items.size(); i > 1; --i) {
    std::swap(items[i - 1], items[static_cast<std::size_t>(dice.Below(static_cast<int>(i)))]);
  }
}

}  // namespace properties

#endif
