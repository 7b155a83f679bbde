#include "mcbinning/status.h"

#include <algorithm>
#include <iterator>

namespace MCBinning {

MCStatus::MCStatus() noexcept = default;

MCStatus::MCStatus(long code, bool isWarning) noexcept
    : errorCode_(static_cast<std::int32_t>(code)),
      severity_(static_cast<std::int16_t>(2 * static_cast<int>(isWarning) - 1)) {}

bool MCStatus::IsOK() const noexcept { return severity_ == 0; }

bool MCStatus::IsError() const noexcept { return severity_ < 0; }

bool MCStatus::IsWarning() const noexcept { return severity_ > 0; }

long MCStatus::GetErrorCode() const noexcept { return errorCode_; }

void MCStatus::SetDiscreteDatum(unsigned int index, long value) noexcept {
  discreteData_[index] = static_cast<std::int32_t>(value);
}

long MCStatus::GetDiscreteDatum(unsigned int index) const noexcept { return discreteData_[index]; }

void MCStatus::SetScaleDatum(unsigned int index, double value) noexcept {
  scaleData_[index] = value;
}

double MCStatus::GetScaleDatum(unsigned int index) const noexcept { return scaleData_[index]; }

bool MCStatus::operator==(const MCStatus& other) const noexcept {
  return errorCode_ == other.errorCode_ && severity_ == other.severity_ &&
         std::equal(std::begin(discreteData_), std::end(discreteData_),
                    std::begin(other.discreteData_)) &&
         std::equal(std::begin(scaleData_), std::end(scaleData_), std::begin(other.scaleData_));
}

}  // namespace MCBinning
