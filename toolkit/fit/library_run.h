/// Driving the binning library.
#ifndef MCBIN_TOOLKIT_FIT_LIBRARY_RUN_H
#define MCBIN_TOOLKIT_FIT_LIBRARY_RUN_H

#include <cstdint>
#include <string>

#include "toolkit/fit/case_feed.h"
#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// Runs the algorithm that the model's options ask for over the cases, and files the library's
/// version and the results of every attribute in the model, which names the variables. `rows` is
/// the number of cases to come. Throws what ended the run early.
void runLibrary(CaseFeed& feed, std::uint64_t rows, Monitor& monitor, Model& model);

/// What the library calls itself.
std::string libraryVersion();

}  // namespace mcbin

#endif
