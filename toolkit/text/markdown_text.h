/// Writing Markdown.
#ifndef MCBIN_TOOLKIT_TEXT_MARKDOWN_TEXT_H
#define MCBIN_TOOLKIT_TEXT_MARKDOWN_TEXT_H

#include <string>
#include <string_view>

namespace mcbin {

/// The text with what Markdown would take for its own escaped; its line ends stay.
std::string markdownText(std::string_view text);

}  // namespace mcbin

#endif
