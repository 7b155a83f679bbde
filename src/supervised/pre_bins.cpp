#include "supervised/pre_bins.h"

#include <limits>

namespace MCBinning {

bool FindPreBins(BINEFPreProcess& preProcess, const SortedRows& rows, double totalWeight,
                 bool rightBorderClosed, std::vector<double>& boundaries) {
  std::vector<double> cutPoints;
  std::vector<double> binWeights;  // this use leaves it empty
  boundaries.clear();
  if (!preProcess.RunOverTriples(rows, cutPoints, binWeights, totalWeight)) {
    return false;
  }
  if (!cutPoints.empty()) {
    if (rightBorderClosed && cutPoints.back() == rows.Value(rows.Size() - 1)) {
      cutPoints.pop_back();
    } else if (!rightBorderClosed && cutPoints.front() == rows.Value(0)) {
      cutPoints.erase(cutPoints.begin());
    }
  }
  boundaries.push_back(std::numeric_limits<double>::lowest());
  boundaries.insert(boundaries.end(), cutPoints.begin(), cutPoints.end());
  boundaries.push_back(std::numeric_limits<double>::max());
  return true;
}

}  // namespace MCBinning
