#include "toolkit/export/export_formats.h"
#include "toolkit/tables/model_tables.h"
#include "toolkit/text/markdown_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {

/// The tables that `show` prints, as Markdown.
std::string markdownExport(const Model& model, const ExportOptions& /*options*/) {
  std::string text = markdownText(summaryText(model)) + "\n## Attributes" +
                     (model.target ? " by gain over all cases" : "") + "\n\n" +
                     rankingTable(model).Markdown();
  for (const std::size_t index : rankByGain(model)) {
    const AttributeModel& attribute = model.attributes[index];
    text += "\n### " + markdownText(visibleText(attribute.name)) + "\n\n";
    text += binningSummary(attribute) + "\n\n";
    if (!attribute.status.reason.empty()) {
      text += markdownText(visibleText(attribute.status.reason)) + "\n\n";
    }
    text += binTable(model, attribute).Markdown();
  }
  return text;
}

}  // namespace mcbin
