/// What every page has around its content.
#ifndef MCBIN_TOOLKIT_REPORT_PAGE_FRAME_H
#define MCBIN_TOOLKIT_REPORT_PAGE_FRAME_H

#include <string>

#include "toolkit/report/markup.h"

namespace mcbin {

/// Starts a page that loads nothing, up to its heading; what was opened is closed by Markup::Take.
/// `style` is added to that of all pages, `defs` stands in front of the heading as it is.
void openPage(Markup& html, const std::string& title, const std::string& style,
              const std::string& defs = "");

/// Each line as a paragraph.
void addLines(Markup& html, const std::string& text);

}  // namespace mcbin

#endif
