#include "toolkit/export/export_formats.h"
#include "toolkit/tables/model_tables.h"

namespace mcbin {

/// The tables that `show` prints, as Markdown.
std::string markdownExport(const Model& model, const ExportOptions& /*options*/) {
  std::string text = summaryText(model) + "\n## Attributes" +
                     (model.target ? " by information gain" : "") + "\n\n" +
                     rankingTable(model).Markdown();
  for (const std::size_t index : rankByInformationGain(model)) {
    const AttributeModel& attribute = model.attributes[index];
    text += "\n### " + attribute.name + "\n\n" + attributeSummary(attribute) + "\n\n";
    if (!attribute.status.reason.empty()) text += attribute.status.reason + "\n\n";
    text += binTable(model, attribute).Markdown();
  }
  return text;
}

}  // namespace mcbin
