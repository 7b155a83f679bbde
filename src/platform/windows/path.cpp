#include "platform/windows/path.h"

#include <windows.h>

#include <cstdio>
#include <cwchar>

namespace MCBinning {
namespace {

// A longer one must be absolute and marked. Of all names those of directories may be least long.
constexpr int kLongestUnmarked = MAX_PATH - 13;

}  // namespace

Path::Path(const char* directory, const char* name, const char* rest) noexcept {
  std::array<char, kLongest> bytes{};
  const int length = std::snprintf(bytes.data(), bytes.size(), "%s%s%s", directory, name, rest);
  if (length < 0 || static_cast<std::size_t>(length) >= bytes.size()) {
    return;
  }
  const int characters =
      MultiByteToWideChar(AreFileApisANSI() != 0 ? CP_ACP : CP_OEMCP, MB_ERR_INVALID_CHARS,
                          bytes.data(), length, text_.data(), static_cast<int>(text_.size()) - 1);
  if (characters <= 0) {
    text_[0] = L'\0';  // the system leaves anything there
    return;
  }
  if (characters > kLongestUnmarked) {
    Mark();
  }
}

void Path::Mark() noexcept {
  std::array<wchar_t, kLongest> whole{};
  const DWORD length =
      GetFullPathNameW(text_.data(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
  const bool isMarked = whole[0] == L'\\' && whole[1] == L'\\' && whole[2] == L'?';
  if (isMarked) {
    return;
  }
  const bool isShare = whole[0] == L'\\' && whole[1] == L'\\';
  const int written =
      std::swprintf(text_.data(), text_.size(), L"%ls%ls", isShare ? L"\\\\?\\UNC" : L"\\\\?\\",
                    whole.data() + (isShare ? 1 : 0));
  if (length == 0 || length >= whole.size() || written < 0) {
    text_[0] = L'\0';
  }
}

}  // namespace MCBinning
