#ifndef MCBINNING_PLATFORM_WINDOWS_PATH_H
#define MCBINNING_PLATFORM_WINDOWS_PATH_H

#include <array>
#include <cstddef>

namespace MCBinning {

/// A path as the system's functions take one however long it is, in memory of its own. Empty, so
/// that they refuse it, when it has kLongest bytes or more or is no text of the code page in use.
class Path {
 public:
  static constexpr std::size_t kLongest = 4096;

  /// Of the three parts, one behind the other.
  explicit Path(const char* directory, const char* name = "", const char* rest = "") noexcept;

  const wchar_t* Text() const { return text_.data(); }

 private:
  void Mark() noexcept;

  std::array<wchar_t, kLongest> text_{};
};

}  // namespace MCBinning

#endif
