// Cuts rows of any bytes by the equal-frequency routine and by the plain one.
#include <cstddef>
#include <cstdint>

#include "random/equal_frequency_steps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  mcbinning_tests::Choices choices({bytes, size});
  mcbinning_tests::stepsOfEqualFrequency(choices);
  return 0;
}
