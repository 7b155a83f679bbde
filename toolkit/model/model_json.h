/// The model file: JSON as docs/model.schema.json describes it.
#ifndef MCBIN_TOOLKIT_MODEL_MODEL_JSON_H
#define MCBIN_TOOLKIT_MODEL_MODEL_JSON_H

#include <string>

#include "toolkit/model/model.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// The model as JSON text with a final line end. The same model gives the same bytes, and
/// `modelFromJson` of the text gives a model whose text is the same again.
std::string modelToJson(const Model& model);

/// Reads a model. `name` stands in front of error messages. Throws DataError when the text is not
/// JSON, not a model, inconsistent, or of a newer schema version.
Model modelFromJson(const std::string& text, const std::string& name);
/// The monitor is asked on the way.
Model modelFromJson(const std::string& text, const std::string& name, Monitor& monitor);

/// Reads the model at `path` ("-": standard input), gzip-compressed or not; DataError when it
/// cannot be read. The monitor is asked while a stream is waited for.
Model loadModel(const std::string& path, Monitor& monitor);

}  // namespace mcbin

#endif
