#ifndef MCBINNING_DATA_CATEGORY_CODE_H
#define MCBINNING_DATA_CATEGORY_CODE_H

#include <limits>

namespace MCBinning {

/// Category codes of the data run from 0 to this one.
constexpr unsigned int kHighestCode = 255;

/// `cell` truncated towards zero. A cell that is no 32-bit integer when truncated (NaN and the
/// infinities among them) gives the most negative integer, which is no category code.
inline int truncatedCode(double cell) {
  return cell > -2147483649.0 && cell < 2147483648.0 ? static_cast<int>(cell)
                                                     : std::numeric_limits<int>::min();
}

/// Negative codes are too high as well, being compared unsigned.
inline bool isCategoryCode(int code) { return static_cast<unsigned int>(code) <= kHighestCode; }

}  // namespace MCBinning

#endif
