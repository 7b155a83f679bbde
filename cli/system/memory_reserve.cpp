#include "cli/system/memory_reserve.h"

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

#include "toolkit/errors.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

constexpr std::size_t kReserveSize = std::size_t{1} << 20U;

// The handlers of the language are functions without an argument.
void* reserve = nullptr;

void releaseReserve() {
  if (reserve == nullptr) throw std::bad_alloc();
  std::free(reserve);
  reserve = nullptr;
}

/// Exceptions that nobody catches come from destructors and from objects made before main(), where
/// nothing but an allocation fails.
[[noreturn]] void endWithoutMemory() {
  removeUnfinishedOutput();
  constexpr std::string_view kMessage = "mcbin: out of memory\n";
  static_cast<void>(::write(STDERR_FILENO, kMessage.data(), kMessage.size()) == 0);
  ::_exit(ExitCode::kInternalError);
}

/// Before the objects of other sources are made: some of a library allocate.
struct HeldBack {
  HeldBack() noexcept { holdMemoryBack(); }
};
[[gnu::init_priority(101)]] const HeldBack heldBack;

}  // namespace

void holdMemoryBack() noexcept {
  if (reserve == nullptr) reserve = std::malloc(kReserveSize);
  std::set_new_handler(releaseReserve);
  std::set_terminate(endWithoutMemory);
}

}  // namespace mcbin
