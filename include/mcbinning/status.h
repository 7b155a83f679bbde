/// The status record that every fallible operation returns or keeps.
#ifndef MCBINNING_STATUS_H
#define MCBINNING_STATUS_H

#include <mcbinning/export.h>

#include <cstdint>

namespace MCBinning {

/// Outcome of an operation: a code, a severity and a few data slots that the code explains
/// (`Run` in algorithms.h, the factories
/// and the outputs list theirs). A plain value without heap storage; copying and moving
/// copy every field and leave the source as it was. Exactly one of IsOK, IsError and IsWarning
/// is true. No operation throws.
class MCBINNING_API MCStatus {
 public:
  /// OK: code 0 and every datum 0.
  MCStatus() noexcept;

  /// A warning when `isWarning` is true, else an error; every datum 0. There is no OK status with
  /// a code. `code` is kept as a signed 32-bit integer.
  MCStatus(long code, bool isWarning) noexcept;

  bool IsOK() const noexcept;
  bool IsError() const noexcept;
  bool IsWarning() const noexcept;

  /// The code; 0 when there is none.
  long GetErrorCode() const noexcept;

  /// Writes or reads discrete slot `index`, which must be 0, 1 or 2 (not checked). Values are kept
  /// as signed 32-bit integers.
  void SetDiscreteDatum(unsigned int index, long value) noexcept;
  long GetDiscreteDatum(unsigned int index) const noexcept;

  /// Writes or reads scale slot `index`, which must be 0, 1 or 2 (not checked).
  void SetScaleDatum(unsigned int index, double value) noexcept;
  double GetScaleDatum(unsigned int index) const noexcept;

  /// Code, severity and every datum equal; scale data compare as doubles, so a NaN differs from
  /// itself and 0.0 equals -0.0.
  bool operator==(const MCStatus& other) const noexcept;

 private:
  std::int32_t errorCode_ = 0;
  std::int16_t severity_ = 0;
  std::int32_t discreteData_[3] = {0, 0, 0};
  double scaleData_[3] = {0.0, 0.0, 0.0};
};

}  // namespace MCBinning

#endif
