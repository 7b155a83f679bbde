#ifndef MCBINNING_TESTS_SUPPORT_COUNTING_CLOCK_H
#define MCBINNING_TESTS_SUPPORT_COUNTING_CLOCK_H

#include <cstddef>

namespace mcbinning_tests {

/// How often the program has read its processor time. Link counting_clock.cpp, which replaces
/// what the system has for it: each reading is a millisecond after the one before.
std::size_t ClockReadings();

}  // namespace mcbinning_tests

#endif
