#ifndef MCBINNING_EF_EF_BIN_ALGORITHM_H
#define MCBINNING_EF_EF_BIN_ALGORITHM_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "data/prepared_data.h"
#include "mcbinning/algorithms.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "platform/file_system.h"
#include "status/cancel_state.h"

namespace MCBinning {

/// The equal-frequency algorithm. Run prepares the cases once, then bins attribute after attribute.
/// When a run is cancelled or anything throws in it, the prepared data are thrown away with their
/// files; the records filed so far stay, and after an exception the next run prepares anew.
class EFBINAlgorithm : public IEFBINAlgorithm {
 public:
  /// Copies settings and list. `files` is borrowed and must outlive the algorithm.
  EFBINAlgorithm(EFBINSettings& settings, BINVarList& varList,
                 FileSystem& files = RealFileSystem());
  EFBINAlgorithm(const EFBINAlgorithm&) = delete;
  EFBINAlgorithm& operator=(const EFBINAlgorithm&) = delete;
  ~EFBINAlgorithm() override;

  std::string GetVersion() override;
  MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes) override;
  void SetCancelPointer(MCQueryCancel* query) override;
  void Cancel() override;
  void SetProgressListener(ProgressListener* listener) override;
  EFBINOutput* GetOutput() override;
  MCStatus GetStatus() override;
  EFBINSettings* GetSettings() override;
  void Display(std::ostream& os) override;

  /// The algorithm's copy of the list; never null.
  virtual BINVarList* GetVarList();

 private:
  MCStatus RunUnguarded(BINCaseIterator& cases, const std::vector<int>* attributes);
  std::vector<MCStatus> ValidateSelection(const std::vector<int>& attributes) const;
  MCStatus PrepareOnce(BINCaseIterator& cases);
  void BinWholeList();
  void BinSelection(const std::vector<int>& attributes,
                    const std::vector<MCStatus>& attributeStatuses);
  MCStatus BinAttribute(int attribute);
  void Compute(BINAttributeResults& record);
  void File(BINAttributeResults record);

  std::uint32_t recordCount_ = 0;
  bool rightBorderClosed_ = true;
  std::int32_t numberOfBins_ = 0;
  EFBINSettings settings_;
  BINVarList varList_;
  MCStatus status_;
  CancelState cancelState_;
  PreparedData data_;
  int weightIndex_;
  EFBINOutput output_;
};

}  // namespace MCBinning

#endif
