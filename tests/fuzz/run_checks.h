/// What must hold of the results of every run, whatever was binned and whatever failed.
#ifndef MCBINNING_TESTS_FUZZ_RUN_CHECKS_H
#define MCBINNING_TESTS_FUZZ_RUN_CHECKS_H

#include <mcbinning/outputs.h>

#include <cstddef>

#include "random/random_run.h"

namespace mcbinning_tests {

struct RunFacts {
  bool isComplete;     // the run was not ended by an error
  bool cellsAreWhole;  // so far no cell had a fraction, was NaN or was great
};

/// Reads everything from record `first` on, the records that the request made, in every way that
/// there is.
void checkRecords(const BINOutput& output, std::size_t first, const Request& request,
                  const RunFacts& facts);
void checkRecords(const EFBINOutput& output, std::size_t first, const Request& request,
                  const RunFacts& facts);

/// Whether all cells of the request's cases that are not missing are whole numbers of moderate
/// size.
bool hasWholeCells(const Request& request);

}  // namespace mcbinning_tests

#endif
