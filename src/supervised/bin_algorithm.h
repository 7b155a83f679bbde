#ifndef MCBINNING_SUPERVISED_BIN_ALGORITHM_H
#define MCBINNING_SUPERVISED_BIN_ALGORITHM_H

#include <cstddef>
#include <vector>

#include "data/sorted_rows.h"
#include "mcbinning/algorithms.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "supervised/algorithm_frame.h"
#include "supervised/bins.h"

namespace MCBinning {

class BINAlgorithm;

struct SupervisedKind {
  using Algorithm = BINAlgorithm;
  using Interface = IBINAlgorithm;
  using Settings = BINSettings;
  using Output = BINOutput;
  using Record = BINAttributeTargetResults;
  static constexpr char kName[] = "BINAlgorithm";
  static constexpr bool kAsksAroundSteps = false;
};

/// The supervised algorithm. Works on its own copies of settings and list; a later Run may ask for
/// other pairs over the data that the first one prepared. The settings' bin count, small-bin
/// threshold and reports are read at every Run, the distinct-value threshold, the closed border and
/// the temporary directory when the data are prepared.
class BINAlgorithm : public AlgorithmFrame<SupervisedKind> {
 public:
  /// `files` is borrowed and must outlive the algorithm.
  BINAlgorithm(BINSettings& settings, BINVarList& varList, FileSystem& files = realFileSystem());
  ~BINAlgorithm() override;

  MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes,
               const std::vector<int>* targets) override;
  MCStatus GetStatus() override;

  /// Puts into a record, whose total weight stands in it, what is said of the bins that a search
  /// found; nothing when there are none.
  static void FillBins(Bins bins, BINAttributeTargetResults& record);

 private:
  friend AlgorithmFrame<SupervisedKind>;

  MCStatus Select(const Selection& selection, std::vector<Request>& requests) const;
  MCStatus CheckData(const Selection& selection, const MCStatus& ofPass);
  BINAttributeTargetResults NewRecord(const Request& request) const;
  void Compute(BINAttributeTargetResults& record);
  void FileInOutput(BINAttributeTargetResults record);

  MCStatus FindBins(SortedRows& rows, std::size_t nCategories, Bins& bins) const;

  int distinctValueThreshold_ = -1;
};

}  // namespace MCBinning

#endif
