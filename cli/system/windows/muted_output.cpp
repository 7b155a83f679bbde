#include "cli/system/muted_output.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <io.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "toolkit/errors.h"

namespace mcbin {
namespace {

constexpr int kStandardOutput = 1;

}  // namespace

MutedStandardOutput::MutedStandardOutput() : kept_(_dup(kStandardOutput)) {
  const int nowhere = kept_ < 0 ? -1 : _open("NUL", _O_WRONLY | _O_BINARY | _O_NOINHERIT);
  if (nowhere < 0) {
    const int error = errno;
    if (kept_ >= 0) _close(kept_);
    throw DataError(fmt::format("cannot open NUL: {}", std::strerror(error)));
  }
  std::fflush(stdout);
  _dup2(nowhere, kStandardOutput);
  _close(nowhere);
}

MutedStandardOutput::~MutedStandardOutput() { Restore(); }

void MutedStandardOutput::End() {
  if (!Restore()) {
    throw DataError(fmt::format("cannot write standard output: {}", std::strerror(errno)));
  }
}

bool MutedStandardOutput::Restore() {
  if (kept_ < 0) return true;
  std::cout.flush();
  std::fflush(stdout);
  const bool isBack = _dup2(kept_, kStandardOutput) >= 0;
  const int error = errno;
  _close(kept_);
  kept_ = -1;
  errno = error;
  return isBack;
}

}  // namespace mcbin
