/// Counting cases in bins whose cut points stand.
#ifndef MCBIN_TOOLKIT_FIT_CASE_COUNT_H
#define MCBIN_TOOLKIT_FIT_CASE_COUNT_H

#include <cstddef>
#include <optional>
#include <vector>

#include "toolkit/model/bin_lookup.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// The name, rules and cut points of an attribute without any case of `classes` classes.
AttributeModel withoutCases(const AttributeModel& attribute, std::size_t classes);

/// Counts a case with its value and class, each of which may be missing, where it belongs: its
/// weight, and of a case in a bin the range of values. Returns the place.
Placement countCase(AttributeModel& attribute, ClosedSide side, std::optional<double> value,
                    std::optional<std::size_t> code, double weight);

/// How many different values there are. Holds twice as many at most.
class DistinctValues {
 public:
  void Add(double value);
  std::size_t Count();

 private:
  void DropRepeated();

  std::vector<double> values_;
  std::size_t most_ = 4096;  ///< As many are collected before repeated ones are dropped.
};

}  // namespace mcbin

#endif
