#include "supervised/pre_bins.h"

#include <algorithm>
#include <limits>

#include "status/status_codes.h"
#include "supervised/candidate_table.h"
#include "supervised/cut_point_search.h"

namespace MCBinning {

bool arePreBinsNeeded(int threshold, std::uint32_t nDistinctValues) {
  return threshold > 0 && nDistinctValues > static_cast<std::uint32_t>(threshold);
}

bool findPreBins(BINEFPreProcess& preProcess, const SortedRows& rows, double totalWeight,
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

MCStatus countPerBin(const SortedRows& rows, std::size_t nCategories,
                     const std::vector<double>& boundaries, bool rightBorderClosed,
                     std::vector<double>& counts) {
  const MCStatus notCounted = warningStatus(kInconsistentTable);
  if (boundaries.size() < 2) {
    return notCounted;
  }
  const std::size_t bins = boundaries.size() - 1;
  counts.assign(bins * nCategories, 0.0);
  std::vector<double> running(nCategories, 0.0);
  std::size_t bin = 0;
  const auto fileBin = [&] {
    std::copy(running.begin(), running.end(), counts.data() + bin * nCategories);
  };
  for (std::size_t row = 0; row < rows.Size(); ++row) {
    const double value = rows.Value(row);
    const auto belongs = [&](double upper) {
      return rightBorderClosed ? value <= upper : value < upper;
    };
    while (!belongs(boundaries[bin + 1])) {
      fileBin();
      std::fill(running.begin(), running.end(), 0.0);
      if (++bin == bins) {
        return notCounted;
      }
    }
    running[static_cast<std::size_t>(rows.Code(row))] += rows.Weight(row);
  }
  if (bin + 1 != bins) {
    return notCounted;
  }
  fileBin();
  return MCStatus();
}

MCStatus searchPreBins(const SortedRows& rows, std::size_t nCategories, double totalWeight,
                       int numberOfBins, bool rightBorderClosed, Bins& bins) {
  BINEFPreProcess preProcess(numberOfBins, rightBorderClosed);
  std::vector<double> boundaries;
  if (!findPreBins(preProcess, rows, totalWeight, rightBorderClosed, boundaries)) {
    return {};
  }
  std::vector<double> counts;
  const MCStatus countStatus =
      countPerBin(rows, nCategories, boundaries, rightBorderClosed, counts);
  const MCStatus searchStatus =
      searchCutPoints(CandidateTable::FromPreBins(boundaries, counts, nCategories), bins);
  return searchStatus.IsOK() ? countStatus : searchStatus;
}

}  // namespace MCBinning
