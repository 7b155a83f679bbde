#ifndef MCBINNING_SUPERVISED_BIN_ALGORITHM_H
#define MCBINNING_SUPERVISED_BIN_ALGORITHM_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "data/prepared_data.h"
#include "data/sorted_rows.h"
#include "mcbinning/algorithms.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "platform/file_system.h"
#include "status/attribute_progress.h"
#include "status/cancel_state.h"
#include "supervised/bins.h"
#include "supervised/ef_preprocess.h"
#include "supervised/pair_selection.h"

namespace MCBinning {

/// The supervised algorithm. Works on its own copies of settings and list; a later Run may ask for
/// other pairs over the data that the first one prepared. The settings' bin count, small-bin
/// threshold and reports are read at every Run, the distinct-value threshold, the closed border and
/// the temporary directory when the data are prepared. When a Run is cancelled or anything throws
/// in it, the prepared data are thrown away with their files; the records filed so far stay, and
/// after an exception the next Run prepares anew.
class BINAlgorithm : public IBINAlgorithm {
 public:
  /// `files` is borrowed and must outlive the algorithm.
  BINAlgorithm(BINSettings& settings, BINVarList& varList, FileSystem& files = RealFileSystem());
  BINAlgorithm(const BINAlgorithm&) = delete;
  BINAlgorithm& operator=(const BINAlgorithm&) = delete;
  ~BINAlgorithm() override;

  std::string GetVersion() override;
  MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes,
               const std::vector<int>* targets) override;
  void SetCancelPointer(MCQueryCancel* query) override;
  void Cancel() override;
  void SetProgressListener(ProgressListener* listener) override;
  BINOutput* GetOutput() override;
  MCStatus GetStatus() override;
  BINSettings* GetSettings() override;
  void Display(std::ostream& os) override;
  virtual BINVarList* GetVarList();

 private:
  MCStatus RunSelection(BINCaseIterator& cases, const PairSelection& selection);
  void DiscardData();
  MCStatus Prepare(BINCaseIterator& cases);
  MCStatus BinPairs(const PairSelection& selection);
  MCStatus BinSelectedPairs(const PairSelection& selection, AttributeProgress& progress);
  MCStatus BinWholeList(AttributeProgress& progress);
  MCStatus BinPair(int attribute, int target);
  BINAttributeTargetResults NewRecord(int attribute, int target) const;
  void Compute(BINAttributeTargetResults& record);
  MCStatus FindBins(Bins& bins);
  MCStatus FindBinsOfPreBins(Bins& bins);
  void File(BINAttributeTargetResults record);

  std::uint32_t recordCount_ = 0;
  int targetCategoryCount_ = 0;
  bool rightBorderClosed_ = true;
  int numberOfBins_ = 0;
  int distinctValueThreshold_ = -1;
  BINSettings settings_;
  BINVarList varList_;
  MCStatus status_;
  CancelState cancelState_;
  PreparedData data_;
  std::unique_ptr<BINEFPreProcess> preProcess_;  // while a computation runs
  std::vector<MCStatus> pairStatuses_;
  int targetIndex_;
  int weightIndex_;
  SortedRows* pairRows_ = nullptr;  // borrowed from data_
  BINOutput output_;
};

}  // namespace MCBinning

#endif
