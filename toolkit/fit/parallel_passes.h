/// The second pass over the data by several threads, each of which bins some of the attributes.
#ifndef MCBIN_TOOLKIT_FIT_PARALLEL_PASSES_H
#define MCBIN_TOOLKIT_FIT_PARALLEL_PASSES_H

#include <cstddef>
#include <functional>
#include <memory>

#include "toolkit/fit/binning_pass.h"

namespace mcbin {

/// Makes another source of the same cases, in front of the first, to be read at the same time as
/// others; null when there can be none.
using AnotherSource = std::function<std::unique_ptr<CaseSource>()>;

/// As runPass, by up to `jobs` threads and with the same result. Attribute a is binned by thread
/// a modulo their number, each of which runs an algorithm object of its own over a source of its
/// own; with one thread, or without another source, it all happens on the calling thread. Only that
/// one calls `another` and `monitor`. What ends the work of one thread ends that of all.
PassResult runPasses(const PassSetting& setting, const FeedLayout& layout, CaseSource& cases,
                     std::size_t jobs, const AnotherSource& another, Monitor& monitor);

}  // namespace mcbin

#endif
