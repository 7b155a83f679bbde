#include "python/ext/muted_output.h"

#include <iostream>
#include <mutex>
#include <streambuf>

namespace mcbin::python {
namespace {

/// Swallows everything.
class Nowhere : public std::streambuf {
 protected:
  int_type overflow(int_type byte) override { return traits_type::not_eof(byte); }
};

struct Muting {
  std::mutex mutex;
  int users = 0;
  std::streambuf* before = nullptr;
  Nowhere nowhere;
};

/// Never destroyed: a thread may still be fitting when the process ends.
Muting& muting() {
  static auto* const state = new Muting;
  return *state;
}

}  // namespace

MutedStandardOutput::MutedStandardOutput() {
  Muting& state = muting();
  const std::lock_guard<std::mutex> lock(state.mutex);
  if (state.users++ == 0) state.before = std::cout.rdbuf(&state.nowhere);
}

MutedStandardOutput::~MutedStandardOutput() {
  Muting& state = muting();
  const std::lock_guard<std::mutex> lock(state.mutex);
  if (--state.users == 0) std::cout.rdbuf(state.before);
}

}  // namespace mcbin::python
