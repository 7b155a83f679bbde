/// Texts that come from outside (cells, names, paths, models), made fit to be shown.
#ifndef MCBIN_TOOLKIT_TEXT_VISIBLE_TEXT_H
#define MCBIN_TOOLKIT_TEXT_VISIBLE_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// As much of a text as a message quotes, in characters.
inline constexpr std::size_t kExcerptLength = 60;

/// Whether a terminal acts on the character instead of showing it: control characters, those that
/// end a line and those that turn the direction of writing.
bool actsOnTerminal(char32_t character);

/// The text on one line, without anything that a terminal acts on: \n, \r and \t for line ends and
/// tabs, \x1B for other such characters of ASCII and for bytes that are no UTF-8, \u{202E} beyond.
std::string visibleText(std::string_view text);

/// The same with its line ends kept.
std::string visibleLines(std::string_view text);

/// The first characters of a text, made visible, and "..." when there are more.
std::string excerpt(std::string_view text);

/// An excerpt in single quotes.
std::string quotedExcerpt(std::string_view text);

/// Excerpts of the first `most` texts, separated by commas, and "..." when there are more.
std::string excerptList(const std::vector<std::string>& texts, std::size_t most);

}  // namespace mcbin

#endif
