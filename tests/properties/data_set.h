/// Random data for the properties of the algorithms: ordinary runs. Their values are moderate
/// numbers; what becomes of NaN and infinite ones is compared case by case elsewhere.
#ifndef MCBINNING_TESTS_PROPERTIES_DATA_SET_H
#define MCBINNING_TESTS_PROPERTIES_DATA_SET_H

#include <mccomvor/missing_value.h>

#include <cstddef>
#include <vector>

#include "random/random_run.h"

namespace properties {

using mcbinning_tests::Case;
using mcbinning_tests::Choices;

inline const double kMissing = MCMV::gMissingValue;

/// The attributes have the indexes from 0 on, then comes the target, then maybe a weight.
struct DataSet {
  explicit DataSet(Choices& choices);

  bool IsMissing(std::size_t attribute, double value) const;
  bool HasTarget(const Case& one) const { return one[target] != kMissing && one[target] != -1.0; }
  bool HasWeight() const { return list.plain.weight >= 0; }

  /// What the case counts for; 0 when it counts for nothing.
  double WeightOf(const Case& one) const;

  /// Whether sums of weights are the same in any order, to the last bit.
  bool HasExactSums() const;
  bool HasWholeWeights() const;

  /// Without the weight variable every case counts for 1.
  void DropWeight();

  /// Multiplies the values of every attribute and what is user-missing in it.
  void Scale(double factor);

  /// Adds a case of every category that is missing in every attribute. The number of categories
  /// that an algorithm sees is that of the highest code; after this it stays, whatever is done to
  /// the cases that count.
  void AddEveryCategory();

  /// One of the cases with every attribute missing.
  Case WithoutAttributes(Choices& choices) const;

  mcbinning_tests::ListPair list;
  plain_model::Settings settings;
  std::vector<Case> cases;
  std::size_t target;  // its index, the number of attributes
};

}  // namespace properties

#endif
