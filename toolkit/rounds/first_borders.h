/// Where a run in rounds looks first.
#ifndef MCBIN_TOOLKIT_ROUNDS_FIRST_BORDERS_H
#define MCBIN_TOOLKIT_ROUNDS_FIRST_BORDERS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/fit/case_source.h"

namespace mcbin {

/// Values that cut an attribute into parts of similar weight: all of a sample when they are few,
/// else quantiles, fewer for more categories. NaN is no value.
std::vector<double> firstBorders(std::vector<double> sample, std::size_t categories);

/// Cases of another source, some thousands of which are remembered, evenly spread.
class SampledCases : public CaseSource {
 public:
  /// Borrows `cases`.
  explicit SampledCases(CaseSource& cases);

  const std::vector<std::string>& ColumnNames() const override { return cases_.ColumnNames(); }
  std::string WhyUnfit(std::size_t column) const override { return cases_.WhyUnfit(column); }
  bool HoldsOnlyNumbers(std::size_t column) const override {
    return cases_.HoldsOnlyNumbers(column);
  }
  void Rewind() override { cases_.Rewind(); }
  bool NextCase() override;
  CellKind ReadNumber(std::size_t column, double& value) override {
    return cases_.ReadNumber(column, value);
  }
  std::string_view ReadText(std::size_t column) override { return cases_.ReadText(column); }
  std::string Where() const override { return cases_.Where(); }
  double ShareRead() const override { return cases_.ShareRead(); }

  /// The numbers of a column in the remembered cases, NaN for other cells.
  const std::vector<double>& Sample(std::size_t column) const { return samples_[column]; }

 private:
  void Remember();
  void ForgetEverySecond();

  CaseSource& cases_;
  std::vector<std::vector<double>> samples_;  ///< By column.
  std::size_t stride_ = 1;
  std::size_t untilNext_ = 1;
};

}  // namespace mcbin

#endif
