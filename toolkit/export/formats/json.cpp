#include "toolkit/export/export_formats.h"
#include "toolkit/model/model_json.h"

namespace mcbin {

/// The model as fit writes it, of the chosen attributes.
std::string jsonExport(const Model& model, const ExportOptions& /*options*/) {
  return modelToJson(model);
}

}  // namespace mcbin
