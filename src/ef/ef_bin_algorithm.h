#ifndef MCBINNING_EF_EF_BIN_ALGORITHM_H
#define MCBINNING_EF_EF_BIN_ALGORITHM_H

#include <vector>

#include "mcbinning/algorithms.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "supervised/algorithm_frame.h"

namespace MCBinning {

class EFBINAlgorithm;

struct EqualFrequencyKind {
  using Algorithm = EFBINAlgorithm;
  using Interface = IEFBINAlgorithm;
  using Settings = EFBINSettings;
  using Output = EFBINOutput;
  using Record = BINAttributeResults;
  static constexpr char kName[] = "EFBINAlgorithm";
  static constexpr bool kAsksAroundSteps = true;
};

/// The equal-frequency algorithm. Run prepares the cases once, then bins attribute after attribute.
class EFBINAlgorithm : public AlgorithmFrame<EqualFrequencyKind> {
 public:
  /// `files` is borrowed and must outlive the algorithm.
  EFBINAlgorithm(EFBINSettings& settings, BINVarList& varList,
                 FileSystem& files = realFileSystem());
  ~EFBINAlgorithm() override;

  MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes) override;
  MCStatus GetStatus() override;

 private:
  friend AlgorithmFrame<EqualFrequencyKind>;

  MCStatus Select(const Selection& selection, std::vector<Request>& requests) const;
  static MCStatus CheckData(const Selection& selection, const MCStatus& ofPass);
  static BINAttributeResults NewRecord(const Request& request);
  void Compute(BINAttributeResults& record);
  void FileInOutput(BINAttributeResults record);
};

}  // namespace MCBinning

#endif
