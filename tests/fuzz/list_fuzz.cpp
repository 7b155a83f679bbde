// Makes calls of any bytes to variable lists, variables, encoders, user-missing definitions,
// intervals, settings and outputs. After every call everything that can be read must be as the
// plain model says; a difference that is thrown ends the program, which the fuzzer takes for a
// find.
#include <cstddef>
#include <cstdint>

#include "random/steps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  mcbinning_tests::Choices choices({bytes, size});
  switch (choices.Below(16)) {
    case 0:
      mcbinning_tests::stepsOfSettings(choices);
      break;
    case 1:
      mcbinning_tests::stepsOfIntervals(choices);
      break;
    case 2:
      mcbinning_tests::stepsOfDefinitions(choices);
      break;
    case 3:
      mcbinning_tests::stepsOfEncoders(choices);
      break;
    case 4:
      mcbinning_tests::stepsOfOutputs(choices);
      break;
    default:
      mcbinning_tests::stepsOfLists(choices);
  }
  return 0;
}
