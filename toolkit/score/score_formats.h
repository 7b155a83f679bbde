/// The forms in which a score is written.
#ifndef MCBIN_TOOLKIT_SCORE_SCORE_FORMATS_H
#define MCBIN_TOOLKIT_SCORE_SCORE_FORMATS_H

#include <span>
#include <string>

#include "toolkit/score/score_model.h"

namespace mcbin {

struct ScoreFormat {
  const char* name;
  const char* help;  ///< One sentence for the help text, without a full stop.
  std::string (*write)(const Model& model, const ModelScore& score);
};

/// Every format, in the order in which help texts name them; the first is the default.
std::span<const ScoreFormat> scoreFormats();

/// The format of that name, which must be one of `scoreFormats`.
const ScoreFormat& scoreFormat(const std::string& name);

}  // namespace mcbin

#endif
