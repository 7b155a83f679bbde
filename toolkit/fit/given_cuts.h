/// Cut points that the user gives in place of a search.
#ifndef MCBIN_TOOLKIT_FIT_GIVEN_CUTS_H
#define MCBIN_TOOLKIT_FIT_GIVEN_CUTS_H

#include <optional>
#include <string>
#include <vector>

#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

struct GivenCuts {
  std::string column;             ///< Name or number; of a model the very name.
  std::vector<double> cutPoints;  ///< Strictly ascending; may be none.
  /// Of the model that they are from. Columns that are not cut now it may name, too.
  std::optional<ClosedSide> closedSide = {};
};

/// The cut points that `text` names: COLUMN=NUMBER,NUMBER..., or a file that holds a model or such
/// texts, one a line; blank lines and lines that start with # are passed over. UsageError for
/// another text, DataError for a file that cannot be read so.
std::vector<GivenCuts> readGivenCuts(const std::string& text, Monitor& monitor);

/// Those of every attribute.
std::vector<GivenCuts> cutsOf(const Model& model);

}  // namespace mcbin

#endif
