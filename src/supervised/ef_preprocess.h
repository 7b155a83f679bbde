#ifndef MCBINNING_SUPERVISED_EF_PREPROCESS_H
#define MCBINNING_SUPERVISED_EF_PREPROCESS_H

#include <vector>

namespace MCBinning {

class SortedRows;

/// Cuts the sorted rows of one attribute into bins of nearly equal total weight. Rows of equal
/// value are never separated and are added up in the tie order (mcbinning.h); a NaN equals
/// nothing and is a run of its own. One object serves any number of attributes.
class BINEFPreProcess {
 public:
  BINEFPreProcess(int numberOfBins, bool rightBorderClosed);
  BINEFPreProcess(const BINEFPreProcess&) = default;
  BINEFPreProcess& operator=(const BINEFPreProcess&) = default;
  virtual ~BINEFPreProcess();

  /// Both append to output vectors that are expected empty and take the weight of all rows.
  /// False, with the outputs untouched, when the number of bins is below 1, the table has no row or
  /// the total weight is not above 0.
  ///
  /// RunOverTriples serves the supervised algorithm: at most (number of bins - 1) ascending cut
  /// points, ends of the value range included; `binWeights` stays empty. RunOverPairs is the
  /// whole step of the equal-frequency algorithm: cut points at an end of the range and empty
  /// bins are removed and the weight of every bin is returned.
  bool RunOverTriples(const SortedRows& table, std::vector<double>& cutPoints,
                      std::vector<double>& binWeights, double totalWeight);
  bool RunOverPairs(const SortedRows& table, std::vector<double>& cutPoints,
                    std::vector<double>& binWeights, double totalWeight);

 private:
  bool rightBorderClosed_;
  int numberOfBins_;
};

}  // namespace MCBinning

#endif
