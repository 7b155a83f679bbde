#ifndef MCBINNING_STATUS_STATUS_CODES_H
#define MCBINNING_STATUS_STATUS_CODES_H

#include "mcbinning/status.h"

namespace MCBinning {

/// The code of every status that the component makes; docs/status-codes.md says where each is met.
enum StatusCode : long {
  kCancelled = 1,
  kFailed = 3,  // no memory, a column that cannot be read back, or a host object that threw
  kNoTempDirectory = 120001,
  kInconsistentTable = 120002,
  kInvalidList = 120003,
  kNoCases = 120004,
  kSameOrWeightVariable = 120005,
  kTargetNotCategorical = 120006,
  kUnusableSelection = 120008,
  kNoNumberOfBins = 120009,
  kUnusableTarget = 120010,
  kAttributeOutOfRange = 120011,
  kNoCategoryCode = 120012,
  kNoSuchIndex = 120013,  // of a variable, a column or a result
  kSingleValue = 120014,
  kNoValidCases = 120015,
  kSingleCategory = 120016,
  kNoSplit = 120017,
  kSomeNotOK = 120018,
  kNoEqualFrequencyCut = 120019,
  kNoResults = 120020,
  kNoTempFile = 120021,
  kDataChanged = 120022,    // between two questions of a run in rounds
  kTooMuchWeight = 120023,  // 2^53 or more, from where on sums are not exact
  kUnfitAnswer = 120024,    // or question
  kFractionalWeight = 120025,
};

inline MCStatus errorStatus(StatusCode code) { return {code, false}; }
inline MCStatus warningStatus(StatusCode code) { return {code, true}; }

/// `status` with discrete datum 0 set to the index of what it is about.
inline MCStatus about(MCStatus status, int index) {
  status.SetDiscreteDatum(0, index);
  return status;
}

}  // namespace MCBinning

#endif
