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

/// The supervised algorithm. Works on its own copies of settings and list; a later Run may ask for
/// other pairs over the data that the first one prepared. The settings' bin count, small-bin
/// threshold and reports are read at every Run, the distinct-value threshold, the closed border and
/// the temporary directory when the data are prepared. When a Run is cancelled or anything throws
/// in it, the prepared data are thrown away with their files; the records filed so far stay, and
/// after an exception the next Run prepares anew.
class BINAlgorithm : public IBINAlgorithm {
 public:
  /// `files` is borrowed and must outlive the algorithm.
  BINAlgorithm(BINSettings& settings, BINVarList& varList,
               MCBinning::FileSystem& files = MCBinning::RealFileSystem());
  BINAlgorithm(const BINAlgorithm&) = delete;
  BINAlgorithm& operator=(const BINAlgorithm&) = delete;
  ~BINAlgorithm() override;

  std::string GetVersion() override;
  MCBinning::MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes,
                          const std::vector<int>* targets) override;
  void SetCancelPointer(MCQueryCancel* query) override;
  void Cancel() override;
  void SetProgressListener(ProgressListener* listener) override;
  BINOutput* GetOutput() override;
  MCBinning::MCStatus GetStatus() override;
  BINSettings* GetSettings() override;
  void Display(std::ostream& os) override;
  virtual BINVarList* GetVarList();

 private:
  MCBinning::MCStatus RunSelection(BINCaseIterator& cases,
                                   const MCBinning::PairSelection& selection);
  void DiscardData();
  MCBinning::MCStatus Prepare(BINCaseIterator& cases);
  MCBinning::MCStatus BinPairs(const MCBinning::PairSelection& selection);
  MCBinning::MCStatus BinSelectedPairs(const MCBinning::PairSelection& selection,
                                       MCBinning::AttributeProgress& progress);
  MCBinning::MCStatus BinWholeList(MCBinning::AttributeProgress& progress);
  MCBinning::MCStatus BinPair(int attribute, int target);
  BINAttributeTargetResults NewRecord(int attribute, int target) const;
  void Compute(BINAttributeTargetResults& record);
  MCBinning::MCStatus FindBins(MCBinning::Bins& bins);
  MCBinning::MCStatus FindBinsOfPreBins(MCBinning::Bins& bins);
  void File(BINAttributeTargetResults record);

  std::uint32_t recordCount_ = 0;
  int targetCategoryCount_ = 0;
  bool rightBorderClosed_ = true;
  int numberOfBins_ = 0;
  BINSettings settings_;
  BINVarList varList_;
  MCBinning::MCStatus status_;
  MCBinning::CancelState cancelState_;
  MCBinning::PreparedData data_;
  std::unique_ptr<BINEFPreProcess> preProcess_;  // while a computation runs
  std::vector<MCBinning::MCStatus> pairStatuses_;
  int targetIndex_;
  int weightIndex_;
  const MCBinning::SortedRows* pairRows_ = nullptr;  // borrowed from data_
  BINOutput output_;
};

#endif
