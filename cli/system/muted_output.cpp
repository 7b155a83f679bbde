#include "cli/system/muted_output.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "cli/system/standard_streams.h"
#include "toolkit/errors.h"

namespace mcbin {

MutedStandardOutput::MutedStandardOutput() : kept_(::dup(STDOUT_FILENO)) {
  const int nowhere = kept_ < 0 ? -1 : ::open(nullDevice(), O_WRONLY);
  if (nowhere < 0) {
    const int error = errno;
    if (kept_ >= 0) ::close(kept_);
    throw DataError(fmt::format("cannot open {}: {}", nullDevice(), std::strerror(error)));
  }
  std::fflush(stdout);
  ::dup2(nowhere, STDOUT_FILENO);
  ::close(nowhere);
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
  const bool isBack = ::dup2(kept_, STDOUT_FILENO) >= 0;
  const int error = errno;
  ::close(kept_);
  kept_ = -1;
  errno = error;
  return isBack;
}

}  // namespace mcbin
