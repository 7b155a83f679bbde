/// Driving the binning library.
#ifndef MCBIN_FIT_LIBRARY_RUN_H
#define MCBIN_FIT_LIBRARY_RUN_H

#include <cstdint>

#include "fit/case_feed.h"
#include "model/model.h"
#include "text/progress_bar.h"

namespace mcbin {

/// Runs the algorithm that the model's options ask for over the cases, and files the library's
/// version and the results of every attribute in the model, which names the variables. `rows` is
/// the number of cases to come; `progress` may be null. Throws what ended the run early.
void runLibrary(CaseFeed& feed, std::uint64_t rows, ProgressBar* progress, Model& model);

}  // namespace mcbin

#endif
