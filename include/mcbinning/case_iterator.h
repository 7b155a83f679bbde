/// The host's source of cases.
#ifndef MCBINNING_CASE_ITERATOR_H
#define MCBINNING_CASE_ITERATOR_H

#include <mcbinning/export.h>

namespace MCCommon {
class Record;
}

/// Implemented by the host and handed to `Run`, which reads it once, front to back. Cell i of a
/// record belongs to the variable at index i of the variable list: categorical cells hold category
/// codes (whole numbers from 0), scale and weight cells the raw value; a missing cell holds
/// `MCMV::gMissingValue`, a user-missing category -1.0. An exception thrown by the iterator ends
/// the run with status 3.
class MCBINNING_API BINCaseIterator {
 public:
  BINCaseIterator() = default;
  BINCaseIterator(const BINCaseIterator&) = default;
  BINCaseIterator& operator=(const BINCaseIterator&) = default;
  virtual ~BINCaseIterator();

  /// Whether another case can be asked for. It may be asked again before the next case is taken,
  /// as at the start of a run: the answer moves nothing on.
  virtual bool HasNext() = 0;

  /// The next case, or null for a case to be passed over. The record stays the host's and need
  /// only live until the next call.
  virtual const MCCommon::Record* Next() = 0;
};

#endif
