/// The rows of a run against the weights of its bins.
#ifndef MCBIN_TOOLKIT_FIT_BIN_RECOUNT_H
#define MCBIN_TOOLKIT_FIT_BIN_RECOUNT_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// The column files of the library's run in a directory that nobody else writes to, in the order of
/// the columns. `failure` is set when the directory cannot be read to its end.
std::vector<std::filesystem::path> columnFiles(const std::string& directory,
                                               std::error_code& failure);

/// Sets `miscountedWeight` of each attribute. Equal frequency counts rows by their order, not by
/// the cut points: where the middle of two neighbouring doubles rounds onto one of them, or is
/// infinite, rows are counted in another bin than the one they lie in. `directory` holds the run's
/// column files, each of `rows` values; DataError when they cannot be read.
void recountBins(const std::string& directory, std::uint64_t rows, Monitor& monitor, Model& model);

}  // namespace mcbin

#endif
